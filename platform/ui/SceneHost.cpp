#include "platform/ui/SceneHost.h"

#include "platform/ui/Node.h"

namespace platform::ui {

namespace {

Scene layout(const View& view, const std::optional<Size> size, Environment environment, const EdgeInsets safeArea) {
    std::vector<Box> boxes;
    appendBoxOf(view, std::make_shared<Environment>(std::move(environment)), boxes);
    Box& root = boxes.front();
    const Size area = size ? *size : root.size({});
    const Proposal offered{area.width, area.height};
    SceneWriter scene{area, safeArea};
    root.place(offset(Alignment::center, area, root.size(offered)), offered, scene);
    return scene.finish();
}

/// Evaluates its body when it is resolved.
class ObservingNode : public Node {
public:
    ObservingNode(Subscribe subscribe, std::function<View()> body)
        : subscribe_{std::move(subscribe)}, body_{std::move(body)} {}

    void resolve(const Surroundings& environment, std::vector<Box>& boxes) const override {
        if (auto* const observation = environment->observation)
            observation->subscriptions.push_back(subscribe_(observation->changed));
        body_().node().resolve(environment, boxes);
    }

private:
    Subscribe subscribe_;
    std::function<View()> body_;
};

} // namespace

Scene layout(const View& view, const std::optional<Size> size, const Metrics& metrics, const EdgeInsets safeArea) {
    return layout(view, size, Environment{&metrics}, safeArea);
}

View observing(Subscribe subscribe, std::function<View()> body) {
    return makeView<ObservingNode>(std::move(subscribe), std::move(body));
}

struct SceneHost::State : std::enable_shared_from_this<State> {
    State(View view, const Metrics& source, const EdgeInsets insets, Schedule whenTurnEnds, Show showScene)
        : content{std::move(view)},
          metrics{source},
          safeArea{insets},
          schedule{std::move(whenTurnEnds)},
          show{std::move(showScene)} {}

    /// Keeps the old subscriptions until the new ones exist.
    Scene layOut() {
        Observation next{[state = weak_from_this()] {
            if (const auto self = state.lock()) self->scheduleRebuild();
        }};
        Scene laidOut = layout(content, std::nullopt, Environment{&metrics, &next}, safeArea);
        observation = std::move(next);
        return laidOut;
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
    Observation observation;
};

SceneHost::SceneHost(const WindowGroup& group, const Metrics& metrics, const EdgeInsets safeArea, Schedule schedule,
                     Show show)
    : state_{std::make_shared<State>(group.content(), metrics, safeArea, std::move(schedule), std::move(show))} {
    state_->scene = state_->layOut();
}

SceneHost::~SceneHost() = default;

const Scene& SceneHost::scene() const {
    return state_->scene;
}

} // namespace platform::ui
