#pragma once

#include "platform/ui/View.h"

#include <functional>
#include <memory>

namespace platform::ui {

/// Starts a subscription that lives as long as the result.
using Subscribe = std::function<std::shared_ptr<void>(std::function<void()> changed)>;

/// A view whose body is evaluated anew after each change of what it observes.
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
