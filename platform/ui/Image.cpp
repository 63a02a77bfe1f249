#include "platform/ui/Image.h"

#include "platform/ui/Metrics.h"
#include "platform/ui/Node.h"
#include "platform/ui/SceneWriter.h"

namespace platform::ui {

namespace {

class ImageLayout : public LayoutNode {
public:
    ImageLayout(ImageReference image, const bool resizable, const Environment& environment)
        : image_{std::move(image)},
          resizable_{resizable},
          color_{environment.foreground},
          accessibleName_{environment.accessibleName},
          metrics_{*environment.metrics} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Size area = size(proposal);
        writer.add({ImageRun{{origin.x, origin.y, area.width, area.height}, image_, color_, accessibleName_}});
    }

protected:
    Size measure(const Proposal& proposal) override {
        if (resizable_ && proposal.width && proposal.height) return {*proposal.width, *proposal.height};
        const Size own = metrics_.imageSize(image_);
        if (!resizable_) return own;
        return {proposal.width.value_or(own.width), proposal.height.value_or(own.height)};
    }

private:
    ImageReference image_;
    bool resizable_;
    Color color_;
    std::string accessibleName_;
    const Metrics& metrics_;
};

class ImageNode : public Node {
public:
    ImageNode(ImageReference image, const bool resizable) : image_{std::move(image)}, resizable_{resizable} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        members.push_back({std::make_unique<ImageLayout>(image_, resizable_, environment)});
    }
    void describe(Description& description) const override {
        const bool system = image_.source == ImageReference::Source::system;
        description.line((system ? "Image system \"" : "Image \"") + image_.name + "\"");
        if (resizable_) description.modifier("resizable");
    }

private:
    ImageReference image_;
    bool resizable_;
};

} // namespace

Image::Image(ImageReference reference, const bool resizable)
    : View{makeView<ImageNode>(reference, resizable)}, reference_{std::move(reference)} {
}

Image Image::named(std::string name) {
    return {{std::move(name), ImageReference::Source::asset}, false};
}

Image Image::system(std::string name) {
    return {{std::move(name), ImageReference::Source::system}, false};
}

Image Image::resizable() const {
    return {reference_, true};
}

} // namespace platform::ui
