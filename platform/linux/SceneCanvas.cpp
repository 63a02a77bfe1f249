#include "platform/linux/SceneCanvas.h"

#include "platform/linux/AccessibilityEvents.h"
#include "platform/linux/Conversions.h"
#include "platform/linux/ScenePainter.h"
#include "platform/ui/Interaction.h"

#include <QFocusEvent>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

/// What assistive technology sees of a node that is no control.
struct Spoken {
    SceneElement::Kind kind;
    QString name;
    QRectF rect;
};

/// Calls `control`, or `spoken`, for each node that has a voice, in reading order.
template <typename ControlSeen, typename SpokenSeen>
void read(const std::vector<ui::SceneNode>& nodes, const ControlSeen& control, const SpokenSeen& spoken) {
    for (const ui::SceneNode& node : nodes) {
        if (const auto* found = std::get_if<ui::Control>(&node.value)) control(*found);
        if (const auto* clip = std::get_if<ui::Clip>(&node.value)) read(clip->content, control, spoken);
        if (const auto* text = std::get_if<ui::TextRun>(&node.value)) {
            const auto kind = text->announced ? SceneElement::Kind::announcedText : SceneElement::Kind::text;
            spoken(Spoken{kind, toQString(text->text), toQRectF(text->rect)});
        }
        if (const auto* image = std::get_if<ui::ImageRun>(&node.value); image && !image->accessibleName.empty()) {
            spoken(Spoken{SceneElement::Kind::image, toQString(image->accessibleName), toQRectF(image->rect)});
        }
    }
}

/// Tells assistive technology, which remembers what it has seen, which objects came and which go.
void tellChanges(const std::vector<QObject*>& before, const std::vector<QObject*>& after) {
    const auto contains = [](const std::vector<QObject*>& objects, const QObject* object) {
        return std::find(objects.begin(), objects.end(), object) != objects.end();
    };
    for (QObject* object : before)
        if (!contains(after, object)) tellAccessibility(object, QAccessible::ObjectDestroyed);
    for (QObject* object : after)
        if (!contains(before, object)) tellAccessibility(object, QAccessible::ObjectCreated);
}

bool isByKeyboard(const Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

} // namespace

SceneCanvas::SceneCanvas(QWidget& window, const ImageStore& images) : QWidget{&window}, images_{images} {
    // Focus that is on no control rests here. It is never reached by keys: those go from control to control.
    setFocusPolicy(Qt::TabFocus);
}

void SceneCanvas::present(const ui::Scene& scene) {
    const ui::Scene before = std::exchange(scene_, scene);
    followControls(before);
    followElements();
    if (scene_ != before) update();
}

void SceneCanvas::followControls(const ui::Scene& before) {
    const SceneControl* focused = focusedControl();
    Controls followed;
    for (const ui::Control* control : ui::controlsOf(scene_)) {
        followed.push_back(takeControl(*control));
        followed.back()->follow(*control, toQRectF(ui::hitArea(scene_, *control)));
        followed.back()->show();
    }
    const Controls gone = std::exchange(controls_, std::move(followed));
    if (focused) moveFocus(before, *focused);
    for (const auto& control : gone)
        if (control) control->dismiss();
}

DeletedLater<SceneControl> SceneCanvas::takeControl(const ui::Control& control) {
    const auto same = std::find_if(controls_.begin(), controls_.end(), [&](const auto& candidate) {
        return candidate && candidate->control().place == control.place &&
               candidate->control().kind.index() == control.kind.index();
    });
    if (same != controls_.end()) return std::move(*same);
    auto made = SceneControl::make(control, *this, images_);
    made->installEventFilter(this);
    return made;
}

void SceneCanvas::moveFocus(const ui::Scene& before, const SceneControl& focused) {
    const auto place = ui::focusAfter(before, scene_, focused.control().place);
    const auto heir = std::find_if(controls_.begin(), controls_.end(),
                                   [&](const auto& control) { return place && control->control().place == *place; });
    if (heir == controls_.end()) return setFocus(Qt::OtherFocusReason);
    if (heir->get() != &focused) (*heir)->setFocus(Qt::OtherFocusReason);
}

SceneControl* SceneCanvas::focusedControl() const {
    const QWidget* focused = window()->focusWidget();
    const auto found =
        std::find_if(controls_.begin(), controls_.end(), [&](const auto& control) { return control.get() == focused; });
    return found == controls_.end() ? nullptr : found->get();
}

void SceneCanvas::followElements() {
    const std::vector<QObject*> before = std::exchange(readingOrder_, {});
    std::size_t texts = 0;
    std::size_t images = 0;
    const auto follow = [this](Elements& elements, const std::size_t index, const Spoken& spoken) {
        if (index == elements.size()) elements.push_back(std::make_unique<SceneElement>(*this));
        elements[index]->follow(spoken.kind, spoken.name, spoken.rect);
        readingOrder_.push_back(elements[index].get());
    };
    auto control = controls_.begin();
    read(
        scene_.nodes, [&](const ui::Control&) { readingOrder_.push_back((control++)->get()); },
        [&](const Spoken& spoken) {
            if (spoken.kind == SceneElement::Kind::image)
                follow(imageElements_, images++, spoken);
            else
                follow(texts_, texts++, spoken);
        });
    tellChanges(before, readingOrder_);
    texts_.resize(texts);
    imageElements_.resize(images);
}

bool SceneCanvas::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (isByKeyboard(reason)) focusIsSeen_ = true;
        if (reason == Qt::MouseFocusReason) focusIsSeen_ = false;
    }
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
    return QWidget::eventFilter(object, event);
}

bool SceneCanvas::focusNextPrevChild(const bool next) {
    if (controls_.empty()) return false;
    const SceneControl* focused = focusedControl();
    const auto at =
        std::find_if(controls_.begin(), controls_.end(), [&](const auto& control) { return control.get() == focused; });
    const std::size_t count = controls_.size();
    const auto index = static_cast<std::size_t>(at - controls_.begin());
    const std::size_t forwards = focused ? (index + 1) % count : 0;
    const std::size_t backwards = focused ? (index + count - 1) % count : count - 1;
    controls_[next ? forwards : backwards]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void SceneCanvas::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    painter.fillRect(rect(), palette().color(QPalette::Window));
    ScenePainter scene{painter, images_};
    scene.paint(scene_.nodes);
    const SceneControl* focused = focusedControl();
    if (focused && isActiveWindow() && focusIsSeen_) scene.paintFocusRing(focused->control());
}

} // namespace platform
