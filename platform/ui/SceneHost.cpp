#include "platform/ui/SceneHost.h"

#include "platform/ui/Layout.h"
#include "platform/ui/Node.h"
#include "platform/ui/RememberedMetrics.h"

namespace platform::ui {

struct SceneHost::State : std::enable_shared_from_this<State> {
    State(View view, const Metrics& source, const EdgeInsets insets, Schedule whenTurnEnds, Show showScene)
        : content{std::move(view)},
          metrics{source},
          safeArea{insets},
          schedule{std::move(whenTurnEnds)},
          show{std::move(showScene)} {}

    Scene layOut() const { return layout(content, std::nullopt, metrics, safeArea); }

    void observe(const View& view) {
        const auto changed = [state = weak_from_this()] {
            if (const auto self = state.lock()) self->scheduleRebuild();
        };
        if (auto subscription = view.node().subscribe(changed)) subscriptions.push_back(std::move(subscription));
        view.node().visitChildren([this](const View& child) { observe(child); });
    }

    void scheduleRebuild() {
        if (rebuildScheduled) return;
        rebuildScheduled = true;
        schedule([state = weak_from_this()] {
            if (const auto self = state.lock()) self->rebuild();
        });
    }

    void rebuild() {
        rebuildScheduled = false;
        Scene next = layOut();
        show(next);
        scene = std::move(next);
    }

    View content;
    RememberedMetrics metrics;
    EdgeInsets safeArea;
    Schedule schedule;
    Show show;
    Scene scene;
    bool rebuildScheduled = false;
    std::vector<std::shared_ptr<void>> subscriptions;
};

SceneHost::SceneHost(const WindowGroup& group, const Metrics& metrics, const EdgeInsets safeArea, Schedule schedule,
                     Show show)
    : state_{std::make_shared<State>(group.content(), metrics, safeArea, std::move(schedule), std::move(show))} {
    state_->observe(state_->content);
    state_->scene = state_->layOut();
}

SceneHost::~SceneHost() = default;

const Scene& SceneHost::scene() const {
    return state_->scene;
}

} // namespace platform::ui
