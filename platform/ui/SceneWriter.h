#pragma once

#include "platform/ui/Scene.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace platform::ui {

/// Receives what a layout places, in painting order, and knows at which place in the tree it stands.
class SceneWriter {
public:
    SceneWriter(Size size, EdgeInsets safeArea) { scene_.size = size, scene_.safeArea = safeArea; }

    void add(SceneNode node) { sink_->push_back(std::move(node)); }

    /// What `write` adds becomes the content of what is returned, in place of the scene's.
    template <typename Write>
    std::vector<SceneNode> collect(Write&& write) {
        std::vector<SceneNode> content;
        auto* outer = std::exchange(sink_, &content);
        write();
        sink_ = outer;
        return content;
    }

    /// Runs `write` with the place led on by `steps`.
    template <typename Write>
    void at(const std::vector<std::uint32_t>& steps, const std::size_t rowLength, Write&& write) {
        const Place outer = place_;
        place_.steps.insert(place_.steps.end(), steps.begin(), steps.end());
        if (rowLength > 0) place_.rowLength = outer.steps.size() + rowLength;
        write();
        place_ = outer;
    }

    const Place& place() const { return place_; }

    /// `rect`, led on under every safe-area edge that it touches.
    Rect underSafeArea(const Rect& rect) const;

    Scene finish() { return std::move(scene_); }

private:
    Scene scene_;
    std::vector<SceneNode>* sink_ = &scene_.nodes;
    Place place_;
};

} // namespace platform::ui
