#include "platform/ui/Observing.h"

#include "platform/ui/Node.h"

namespace platform::ui {

namespace {

class ObservingNode : public Node {
public:
    ObservingNode(Subscribe subscribe, std::function<View()> body)
        : subscribe_{std::move(subscribe)}, body_{std::move(body)} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        body_().node().resolve(environment, members);
    }
    void describe(Description& description) const override { body_().node().describe(description); }
    std::shared_ptr<void> subscribe(const std::function<void()>& changed) const override { return subscribe_(changed); }

private:
    Subscribe subscribe_;
    std::function<View()> body_;
};

} // namespace

View observing(Subscribe subscribe, std::function<View()> body) {
    return makeView<ObservingNode>(std::move(subscribe), std::move(body));
}

} // namespace platform::ui
