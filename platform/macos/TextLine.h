#pragma once

#include "platform/ui/Painting.h"
#include "platform/ui/Scene.h"

#include <string>

namespace platform {

/// The size of one line of text, in points. An empty one is as high as any other.
ui::Size sizeOfText(const std::string& text, ui::Font font);

/// Draws a line in the current graphics context, whose coordinates are flipped; its base line is moved to `grid`.
void drawText(const ui::TextRun& run, const ui::PixelGrid& grid);

} // namespace platform
