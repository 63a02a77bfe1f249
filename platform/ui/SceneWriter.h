#pragma once

#include "platform/ui/Scene.h"

#include <utility>
#include <vector>

namespace platform::ui {

/// Receives what a layout places, in painting order, and knows at which place in the tree it stands.
class SceneWriter {
public:
    SceneWriter(const Size size, const EdgeInsets safeArea) : scene_{size, safeArea, {}} {}

    void add(SceneNode node) { sink_->push_back(std::move(node)); }
    void prefer(const ColorScheme scheme) { scene_.preferredColorScheme = scheme; }

    /// What `write` adds becomes the content of what is returned, in place of the scene's.
    template <typename Write>
    std::vector<SceneNode> collect(Write&& write) {
        std::vector<SceneNode> content;
        auto* outer = std::exchange(sink_, &content);
        write();
        sink_ = outer;
        return content;
    }

    /// Runs `write` with the place led on by `path`.
    template <typename Write>
    void at(const Place& path, Write&& write) {
        const std::size_t length = place_.steps.size();
        const std::size_t rowLength = place_.rowLength;
        place_.steps.insert(place_.steps.end(), path.steps.begin(), path.steps.end());
        if (path.rowLength > 0) place_.rowLength = length + path.rowLength;
        write();
        place_.steps.resize(length);
        place_.rowLength = rowLength;
    }

    const Place& place() const { return place_; }

    /// `rect`, led on under every safe-area edge that it touches.
    Rect underSafeArea(const Rect& rect) const {
        const double left = rect.x <= 0 ? scene_.safeArea.leading : 0;
        const double top = rect.y <= 0 ? scene_.safeArea.top : 0;
        const double right = rect.maxX() >= scene_.size.width ? scene_.safeArea.trailing : 0;
        const double bottom = rect.maxY() >= scene_.size.height ? scene_.safeArea.bottom : 0;
        return {rect.x - left, rect.y - top, rect.width + left + right, rect.height + top + bottom};
    }

    Scene finish() { return std::move(scene_); }

private:
    Scene scene_;
    std::vector<SceneNode>* sink_ = &scene_.nodes;
    Place place_;
};

} // namespace platform::ui
