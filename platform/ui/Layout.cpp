#include "platform/ui/Layout.h"

#include "platform/ui/Node.h"
#include "platform/ui/SceneWriter.h"

namespace platform::ui {

Scene layout(const View& view, const std::optional<Size> size, const Metrics& metrics, const EdgeInsets safeArea) {
    Environment environment;
    environment.metrics = &metrics;
    const auto root = resolveOne(view, environment);
    const Size area = size ? *size : root->size({});
    const Proposal offered{area.width, area.height};
    SceneWriter writer{area, safeArea};
    root->place(offset(Alignment::center, area, root->size(offered)), offered, writer);
    return writer.finish();
}

} // namespace platform::ui
