#pragma once

#include "platform/ui/Scene.h"
#include "platform/ui/View.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// What a screen is made of: a table of contents.
//
//   seen        Text, Image, Circle
//   stacks      HStack, VStack, ZStack, and in them Spacer, Divider
//   members     Group, ForEach, EmptyView
//   controls    Button, Menu, and the Label of a menu's items
//   observing   a view that follows an object
//
// A screen is a value whose body reads like its description:
//
//     struct Greeting {
//         std::string name;
//         std::function<void()> greet;
//
//         View body() const {
//             return HStack{VerticalAlignment::center,
//                           Text::verbatim(name).font(Font::title3),
//                           Spacer{},
//                           Button{"Greet", greet}.accessibilityLabel("Greet " + name)}
//                 .padding(Edge::horizontal, 24)
//                 .background(Color::white);
//         }
//     };
//
// It stands in another one's body as it is: `VStack{HorizontalAlignment::center, Greeting{...}, Divider{}}`.

namespace platform::ui {

/// One line of text. It keeps its own size where it lacks less than a point, else it ends in an ellipsis.
class Text : public View {
public:
    /// The text as it stands, in no need of a translation.
    static Text verbatim(std::string text);

private:
    explicit Text(View view) : View{std::move(view)} {}
};

/// An image by name, of its own size; a missing one is an empty area of nothing by nothing.
class Image : public View {
public:
    /// An asset of the main bundle.
    static Image named(std::string name);
    /// A symbol of the system, drawn in the foreground color.
    static Image system(std::string name);

    /// The same image, stretched to the size offered; a missing one is an empty area of that size.
    Image resizable() const;

private:
    Image(ImageReference reference, bool resizable);

    ImageReference reference_;
};

/// The largest circle in the area offered, centered.
struct Circle {
    /// Its outline, the line centered on the circle.
    View stroke(Color color, double lineWidth = 1) const;
};

/// Its children from leading to trailing, with the default spacing between neighbors.
struct HStack : View {
    template <typename... Children>
    explicit HStack(const VerticalAlignment alignment, Children... children)
        : HStack{alignment, std::vector<View>{std::move(children)...}} {}
    HStack(VerticalAlignment alignment, std::vector<View> children);
};

/// Its children from top to bottom, with the default spacing between neighbors, less between two texts.
struct VStack : View {
    template <typename... Children>
    explicit VStack(const HorizontalAlignment alignment, Children... children)
        : VStack{alignment, std::vector<View>{std::move(children)...}} {}
    VStack(HorizontalAlignment alignment, std::vector<View> children);
};

/// Its children one over the other, the first at the back.
struct ZStack : View {
    template <typename... Children>
    explicit ZStack(const Alignment alignment, Children... children)
        : ZStack{alignment, std::vector<View>{std::move(children)...}} {}
    ZStack(Alignment alignment, std::vector<View> children);
};

/// Takes what is left along the axis of its stack, at the least the default spacing; nothing across.
struct Spacer : View {
    Spacer();
};

/// A line 1 point thick across its stack, over the length offered.
struct Divider : View {
    Divider();
};

/// Several views that count as members of the stack around them.
struct Group : View {
    template <typename... Children>
    explicit Group(Children... children) : Group{std::vector<View>{std::move(children)...}} {}
    explicit Group(std::vector<View> children);
};

/// One row per index from 0 to `count` - 1, identified by the index. What a row holds counts as members of the stack
/// around them; an empty row as none.
struct ForEach : View {
    ForEach(std::size_t count, const std::function<View(std::size_t index)>& row);
};

/// Nothing: a stack that holds it has one member less.
struct EmptyView : Group {
    EmptyView() : Group{std::vector<View>{}} {}
};

/// A title, and the symbol of the system that stands before it where there is room for one: in menus.
struct Label {
    std::string titleKey;
    std::string systemImage = {};
};

/// A control that runs its action once for each press. Its title names it for assistive technology unless an
/// accessibility label does; its look is the button style's, or the title alone.
class Button : public View {
public:
    Button(const char* titleKey, std::function<void()> action) : Button{Label{titleKey}, std::move(action)} {}
    Button(Label label, std::function<void()> action);

    const Label& label() const { return label_; }
    const std::function<void()>& action() const { return action_; }

private:
    Label label_;
    std::function<void()> action_;
};

/// What a button hands to its style.
struct ButtonStyleConfiguration {
    View label;
};

/// A small indicator, 16 points high and wide or as narrow as it is offered, that opens a menu of buttons with their
/// titles and symbols. Its own title is not drawn; it names the menu unless an accessibility label does.
struct Menu : View {
    Menu(std::string titleKey, const std::vector<Button>& items);
};

/// Starts a subscription that lives as long as the result.
using Subscribe = std::function<std::shared_ptr<void>(std::function<void()> changed)>;

/// A view whose body is evaluated anew after each change of what it observes, wherever in a screen it stands.
View observing(Subscribe subscribe, std::function<View()> body);

/// Observes an object by its `objectWillChange()`; the view keeps the object alive.
template <typename Object>
View observing(std::shared_ptr<Object> object, std::function<View()> body) {
    const Subscribe subscribe = [object = std::move(object)](std::function<void()> changed) -> std::shared_ptr<void> {
        auto subscription = object->objectWillChange().subscribe(std::move(changed));
        return std::make_shared<decltype(subscription)>(std::move(subscription));
    };
    return observing(subscribe, std::move(body));
}

} // namespace platform::ui
