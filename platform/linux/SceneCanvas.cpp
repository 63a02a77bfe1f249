#include "platform/linux/SceneCanvas.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/SceneAccessibility.h"
#include "platform/linux/SceneControl.h"
#include "platform/linux/ScenePainter.h"
#include "platform/ui/Interaction.h"

#include <QFocusEvent>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

/// `same` with its real type, or a new child.
template <typename Child, typename... Arguments>
Child& childFor(QObject* const same, Arguments&... arguments) {
    return same ? *static_cast<Child*>(same) : *new Child{arguments...};
}

void dismiss(QObject& child) {
    tellAccessibility(child, QAccessible::ObjectDestroyed);
    if (auto* control = dynamic_cast<SceneControl*>(&child)) control->dismiss();
    // Its own event may have caused the new scene.
    child.deleteLater();
}

bool isByKeyboard(const Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

} // namespace

SceneCanvas::SceneCanvas(QWidget& window, const ImageStore& images) : QWidget{&window}, images_{images} {
}

void SceneCanvas::present(const ui::Scene& scene) {
    const SceneControl* const focused = focusedControl();
    const ui::Scene before = std::exchange(scene_, scene);
    const auto predecessors = ui::predecessors(before, scene_);
    const auto gone = followReadingOrder(predecessors);
    if (focused) moveFocus(before, *focused);
    for (QObject* child : gone)
        dismiss(*child);
    for (std::size_t index = 0; index < readingOrder_.size(); ++index)
        if (!predecessors[index]) tellAccessibility(*readingOrder_[index], QAccessible::ObjectCreated);
    if (scene_ != before) update();
}

std::vector<QObject*> SceneCanvas::followReadingOrder(const Predecessors& predecessors) {
    auto old = std::exchange(readingOrder_, {});
    for (const ui::Readable& readable : ui::readingOrder(scene_)) {
        const auto predecessor = predecessors[readingOrder_.size()];
        QObject* const same = predecessor ? std::exchange(old[*predecessor], nullptr) : nullptr;
        readingOrder_.push_back(std::visit([&](const auto* member) { return follow(*member, same); }, readable));
    }
    std::erase(old, nullptr);
    return old;
}

QObject* SceneCanvas::follow(const ui::TextRun& text, QObject* const same) {
    auto& element = childFor<SceneElement>(same, *this);
    element.follow(text.announced ? QAccessible::Notification : QAccessible::StaticText, text.text, text.rect);
    return &element;
}

QObject* SceneCanvas::follow(const ui::ImageRun& image, QObject* const same) {
    auto& element = childFor<SceneElement>(same, *this);
    element.follow(QAccessible::Graphic, image.accessibleName, image.rect);
    return &element;
}

QObject* SceneCanvas::follow(const ui::Control& control, QObject* const same) {
    auto& native = childFor<SceneControl>(same, *this, images_);
    if (!same) native.installEventFilter(this);
    native.follow(control, ui::hitArea(scene_, control));
    native.show();
    return &native;
}

void SceneCanvas::moveFocus(const ui::Scene& before, const SceneControl& focused) {
    const auto place = ui::focusAfter(before, scene_, focused.control().place);
    const auto all = controls();
    const auto heir =
        std::find_if(all.begin(), all.end(), [&](const auto* control) { return control->control().place == place; });
    if (heir == all.end()) return window()->setFocus(Qt::OtherFocusReason);
    if (*heir != &focused) (*heir)->setFocus(Qt::OtherFocusReason);
}

std::vector<SceneControl*> SceneCanvas::controls() const {
    std::vector<SceneControl*> found;
    for (QObject* child : readingOrder_)
        if (auto* control = dynamic_cast<SceneControl*>(child)) found.push_back(control);
    return found;
}

SceneControl* SceneCanvas::focusedControl() const {
    return dynamic_cast<SceneControl*>(window()->focusWidget());
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
    const auto all = controls();
    const std::size_t count = all.size();
    if (count == 0) return false;
    const auto index = static_cast<std::size_t>(std::find(all.begin(), all.end(), focusedControl()) - all.begin());
    const std::size_t target = next ? std::min(index + 1, count) % count : (index + count - 1) % count;
    all[target]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
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
