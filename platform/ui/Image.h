#pragma once

#include "platform/ui/Scene.h"
#include "platform/ui/View.h"

#include <string>

namespace platform::ui {

/// An image by name, of its own size; a missing one is an empty area of nothing by nothing.
class Image : public View {
public:
    /// An asset of the main bundle.
    static Image named(std::string name);
    /// A symbol of the system, drawn in the foreground colour.
    static Image system(std::string name);

    /// The same image, stretched to the size offered; a missing one is an empty area of that size.
    Image resizable() const;

private:
    Image(ImageReference reference, bool resizable);

    ImageReference reference_;
};

} // namespace platform::ui
