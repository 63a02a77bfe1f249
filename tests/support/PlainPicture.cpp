#include "tests/support/PlainPicture.h"

#include "platform/ui/Painting.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace platform::fake {

namespace {

using Pixel = PlainPicture::Pixel;
using Channels = PlainPicture::Channels;

constexpr double leewayOfEdges = 0.2;

/// How much of a pixel a shape covers.
struct Coverage {
    double share = 0;
    bool isOnRoundEdge = false;
};

/// Distances inside an outline are negative.
Coverage straight(const double distance) {
    return {distance < 0 ? 1.0 : 0.0, false};
}

Coverage round(const double distance) {
    constexpr double halfDiagonal = 0.75;
    if (std::abs(distance) >= halfDiagonal) return straight(distance);
    return {std::clamp(0.5 - distance, 0.0, 1.0), true};
}

/// Whether the outline is round there. A horizontal capsule counts as round up to a pixel beyond its ends, because
/// curves are approximated.
bool isRoundAt(const ui::Outline& outline, const ui::Point point) {
    const double length = outline.cornerRadius() + 1;
    const bool isAtAnEnd = point.x < outline.rect.x + length || point.x > outline.rect.maxX() - length;
    return outline.shape != ui::ShapeKind::rectangle && isAtAnEnd;
}

double distanceFrom(const ui::Outline& outline, const ui::Point point) {
    const ui::Rect& area = outline.rect;
    if (!isRoundAt(outline, point))
        return std::max({area.x - point.x, point.x - area.maxX(), area.y - point.y, point.y - area.maxY()});
    const double radius = outline.cornerRadius();
    const double x = std::clamp(point.x, area.x + radius, area.maxX() - radius);
    return std::hypot(point.x - x, point.y - (area.y + radius)) - radius;
}

Coverage within(const ui::Outline& outline, const ui::Point point) {
    const double distance = distanceFrom(outline, point);
    return isRoundAt(outline, point) ? round(distance) : straight(distance);
}

Coverage along(const ui::StrokedOutline& stroke, const ui::Point point) {
    const double distance = std::abs(distanceFrom(stroke.path, point)) - stroke.lineWidth / 2;
    return isRoundAt(stroke.path, point) ? round(distance) : straight(distance);
}

double fromSegment(const ui::Point from, const ui::Point to, const ui::Point point) {
    const double x = to.x - from.x;
    const double y = to.y - from.y;
    const double share = std::clamp(((point.x - from.x) * x + (point.y - from.y) * y) / (x * x + y * y), 0.0, 1.0);
    return std::hypot(point.x - from.x - share * x, point.y - from.y - share * y);
}

Coverage along(const ui::IndicatorLine& line, const ui::Point point) {
    const auto& [left, tip, right] = line.points;
    return round(std::min(fromSegment(left, tip, point), fromSegment(tip, right, point)) - line.lineWidth / 2);
}

double eightBit(const double component) {
    return std::round(255 * std::clamp(component, 0.0, 1.0));
}

void lay(Pixel& pixel, const ui::Color& color, const Coverage& coverage) {
    const double share = coverage.share * color.opacity;
    double contrast = 0;
    const auto mix = [&](double& under, const double component) {
        contrast = std::max(contrast, std::abs(eightBit(component) - under));
        under += share * (eightBit(component) - under);
    };
    mix(pixel.color.red, color.red);
    mix(pixel.color.green, color.green);
    mix(pixel.color.blue, color.blue);
    pixel.leeway *= 1 - share;
    if (coverage.isOnRoundEdge) pixel.leeway += leewayOfEdges * contrast * color.opacity;
}

/// Paints one pixel of a scene.
class Painter {
public:
    Painter(Pixel& pixel, const ui::Point middle) : pixel_{pixel}, middle_{middle} {}

    void paint(const std::vector<ui::SceneNode>& nodes) {
        for (const ui::SceneNode& node : nodes)
            std::visit([this](const auto& value) { paint(value); }, node.value);
    }

private:
    void paint(const ui::Fill& fill) {
        if (isNear(fill.rect)) lay(pixel_, fill.color, within(outlineOf(fill.shape, fill.rect, grid_), middle_));
    }
    void paint(const ui::Stroke& stroke) {
        if (isNear(stroke.rect)) lay(pixel_, stroke.color, along(outlineOf(stroke, grid_), middle_));
    }
    void paint(const ui::MenuIndicator& indicator) {
        if (isNear(indicator.rect)) lay(pixel_, indicator.color, along(lineOf(indicator, grid_), middle_));
    }
    void paint(const ui::Control& control) { paint(control.content); }
    void paint(const ui::TextRun&) {}
    void paint(const ui::ImageRun&) {}
    void paint(const ui::Clip& clip) {
        if (!isNear(clip.rect)) return;
        Pixel content = pixel_;
        Painter{content, middle_}.paint(clip.content);
        const Channels& color = content.color;
        const ui::Color seen{color.red / 255, color.green / 255, color.blue / 255, 1};
        lay(pixel_, seen, within(outlineOf(clip.shape, clip.rect, grid_), middle_));
    }
    /// Whether anything painted for a rectangle can be visible here.
    bool isNear(const ui::Rect& rect) const {
        constexpr double margin = 4;
        return middle_.x > rect.x - margin && middle_.x < rect.maxX() + margin && middle_.y > rect.y - margin &&
               middle_.y < rect.maxY() + margin;
    }

    const ui::PixelGrid grid_{1};
    Pixel& pixel_;
    ui::Point middle_;
};

std::string written(const Channels& color) {
    std::ostringstream text;
    text << color.red << '/' << color.green << '/' << color.blue;
    return text.str();
}

bool isNear(const Channels& seen, const Pixel& pixel) {
    constexpr double rounding = 0.5001;
    const auto near = [&](const double a, const double b) { return std::abs(a - b) <= pixel.leeway + rounding; };
    return near(seen.red, pixel.color.red) && near(seen.green, pixel.color.green) && near(seen.blue, pixel.color.blue);
}

void empty(std::vector<ui::SceneNode>& nodes) {
    for (ui::SceneNode& node : nodes) {
        if (auto* text = std::get_if<ui::TextRun>(&node.value)) text->text.clear();
        if (auto* image = std::get_if<ui::ImageRun>(&node.value)) image->image = {"none"};
        if (auto* clip = std::get_if<ui::Clip>(&node.value)) empty(clip->content);
        if (auto* control = std::get_if<ui::Control>(&node.value)) empty(control->content);
    }
}

} // namespace

PlainPicture::PlainPicture(const ui::Scene& scene)
    : safeArea_{scene.safeArea},
      width_{static_cast<int>(safeArea_.leading + scene.size.width + safeArea_.trailing)},
      height_{static_cast<int>(safeArea_.top + scene.size.height + safeArea_.bottom)} {
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            Pixel pixel;
            lay(pixel, ui::windowGround, {1, false});
            Painter{pixel, {x + 0.5 - safeArea_.leading, y + 0.5 - safeArea_.top}}.paint(scene.nodes);
            pixels_.push_back(pixel);
        }
    }
}

std::vector<std::string> PlainPicture::differences(const Seen& seen) const {
    constexpr std::size_t enough = 10;
    std::vector<std::string> found;
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_ && found.size() < enough; ++x) {
            if (isNear(seen(x, y), at(x, y))) continue;
            std::ostringstream text;
            text << x - safeArea_.leading << ',' << y - safeArea_.top << " is " << written(seen(x, y)) << " and not "
                 << written(at(x, y).color) << ", give or take " << at(x, y).leeway;
            found.push_back(text.str());
        }
    }
    return found;
}

ui::Scene withoutTextsAndImages(ui::Scene scene) {
    empty(scene.nodes);
    return scene;
}

} // namespace platform::fake
