#include "platform/ui/Text.h"

#include "platform/ui/Metrics.h"
#include "platform/ui/Node.h"
#include "platform/ui/SceneWriter.h"

#include <algorithm>

namespace platform::ui {

namespace {

/// What a line may lack without being cut.
constexpr double tolerance = 1;

class TextLayout : public LayoutNode {
public:
    TextLayout(std::string text, const Environment& environment)
        : text_{std::move(text)},
          font_{environment.font.style, environment.fontWeight.value_or(environment.font.weight)},
          color_{environment.foreground},
          announced_{environment.announced},
          metrics_{*environment.metrics} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size run = size(proposal);
        const bool truncated = run.width < ownSize().width;
        writer.add({TextRun{{origin.x, origin.y, run.width, run.height}, text_, font_, color_, truncated, announced_}});
    }
    bool isText() const override { return true; }

protected:
    Size measure(const Proposal& proposal) override {
        const Size own = ownSize();
        if (!proposal.width || own.width - *proposal.width < tolerance) return own;
        return {std::max(0.0, *proposal.width), own.height};
    }

private:
    Size ownSize() const { return metrics_.textSize(text_, font_); }

    std::string text_;
    Font font_;
    Color color_;
    bool announced_;
    const Metrics& metrics_;
};

class TextNode : public Node {
public:
    TextNode(std::string kind, std::string text) : kind_{std::move(kind)}, text_{std::move(text)} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        members.push_back({std::make_unique<TextLayout>(text_, environment)});
    }
    void describe(Description& description) const override { description.line("Text " + kind_ + " \"" + text_ + "\""); }

private:
    std::string kind_;
    std::string text_;
};

} // namespace

Text Text::verbatim(std::string text) {
    return Text{makeView<TextNode>("verbatim", std::move(text))};
}

Text Text::localized(std::string key) {
    return Text{makeView<TextNode>("localized", std::move(key))};
}

} // namespace platform::ui
