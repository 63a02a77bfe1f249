#pragma once

#include "platform/ui/Scene.h"
#include "platform/ui/View.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// The elements of screens:
//
//   visible     Text, Image, Circle
//   stacks      HStack, VStack, ZStack; inside them Spacer, Divider
//   members     Group, ForEach, EmptyView
//   controls    Button, Menu, and the Label of a menu's items
//   observing   a view that is rebuilt when an object changes
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
// Use it in the body of another view: `VStack{HorizontalAlignment::center, Greeting{...}, Divider{}}`.

namespace platform::ui {

/// One line of text. If it is offered at least a point less than its width, it ends in an ellipsis.
class Text : public View {
public:
    /// Text that is not a key for translation.
    static Text verbatim(std::string text);

private:
    explicit Text(View view) : View{std::move(view)} {}
};

/// An image by name, in its own size; 0 by 0 if it is missing.
class Image : public View {
public:
    /// An asset of the main bundle.
    static Image named(std::string name);
    /// A system symbol, drawn in the foreground color.
    static Image system(std::string name);

    /// The same image, stretched to the offered size. If it is missing, that area stays empty.
    Image resizable() const;

private:
    Image(ImageReference reference, bool resizable);

    ImageReference reference_;
};

/// The largest circle in the offered area, centered.
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

/// Its children on top of each other, the first at the back.
struct ZStack : View {
    template <typename... Children>
    explicit ZStack(const Alignment alignment, Children... children)
        : ZStack{alignment, std::vector<View>{std::move(children)...}} {}
    ZStack(Alignment alignment, std::vector<View> children);
};

/// Takes the remaining length along the axis of its stack, at least the default spacing; nothing across.
struct Spacer : View {
    Spacer();
};

/// A line across its stack, 1 point thick and as long as offered.
struct Divider : View {
    Divider();
};

/// Several views that are members of the enclosing stack.
struct Group : View {
    template <typename... Children>
    explicit Group(Children... children) : Group{std::vector<View>{std::move(children)...}} {}
    explicit Group(std::vector<View> children);
};

/// One row per index from 0 to `count` - 1, identified by the index. The views of a row are members of the enclosing
/// stack.
struct ForEach : View {
    ForEach(std::size_t count, const std::function<View(std::size_t index)>& row);
};

/// Nothing. It is not a member of its stack.
struct EmptyView : Group {
    EmptyView() : Group{std::vector<View>{}} {}
};

/// A title and a system symbol, which is shown only in menus.
struct Label {
    std::string titleKey;
    std::string systemImage = {};
};

/// A control that runs its action once per press. Its accessible name is the accessibility label, or else the title. It
/// looks as its button style says; without one, it is only its title.
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

/// What a button style gets.
struct ButtonStyleConfiguration {
    View label;
};

/// A small indicator, 16 points high and at most as wide, that opens a menu of buttons with titles and symbols. Its own
/// title is not drawn; it is the accessible name unless there is an accessibility label.
struct Menu : View {
    Menu(std::string titleKey, const std::vector<Button>& items);
};

/// Starts a subscription that lives as long as the result.
using Subscribe = std::function<std::shared_ptr<void>(std::function<void()> changed)>;

/// A view whose body is evaluated again after each change of what it observes. It can be anywhere in a screen.
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
