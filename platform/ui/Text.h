#pragma once

#include "platform/ui/View.h"

#include <string>

namespace platform::ui {

/// One line of text. It keeps its own size where it lacks less than a point, else it ends in an ellipsis.
class Text : public View {
public:
    /// The text as it stands.
    static Text verbatim(std::string text);
    /// The text of a localisable key; where no translation exists, the key itself.
    static Text localized(std::string key);

private:
    explicit Text(View view) : View{std::move(view)} {}
};

} // namespace platform::ui
