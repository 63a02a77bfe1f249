#include "tests/support/PlainPicture.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace platform::fake {

namespace {

using Pixel = PlainPicture::Pixel;
using Channels = PlainPicture::Channels;

constexpr ui::Color ground{236 / 255.0, 236 / 255.0, 236 / 255.0, 1};
constexpr double leewayOfEdges = 0.2;

/// How much of a pixel a shape covers.
struct Coverage {
    double share = 0;
    bool isOnRoundEdge = false;
};

/// What lies at a distance inside an outline is negative.
Coverage straight(const double distance) {
    return {distance < 0 ? 1.0 : 0.0, false};
}

Coverage round(const double distance) {
    constexpr double halfDiagonal = 0.75;
    if (std::abs(distance) >= halfDiagonal) return straight(distance);
    return {std::clamp(0.5 - distance, 0.0, 1.0), true};
}

bool contains(const ui::Rect& rect, const ui::Point point) {
    return point.x >= rect.x && point.x < rect.maxX() && point.y >= rect.y && point.y < rect.maxY();
}

double onPixels(const double position) {
    return std::floor(position + 0.5);
}

ui::Rect onPixels(const ui::Rect& rect) {
    const double x = onPixels(rect.x);
    const double y = onPixels(rect.y);
    return {x, y, onPixels(rect.maxX()) - x, onPixels(rect.maxY()) - y};
}

double fromCircle(const ui::Rect& rect, const ui::Point point) {
    const double side = std::min(rect.width, rect.height);
    const double radius = onPixels(side) / 2;
    const double x = onPixels(rect.x + (rect.width - side) / 2) + radius;
    const double y = onPixels(rect.y + (rect.height - side) / 2) + radius;
    return std::hypot(point.x - x, point.y - y) - radius;
}

double fromRectangle(const ui::Rect& rect, const ui::Point point) {
    const ui::Rect area = onPixels(rect);
    return std::max({area.x - point.x, point.x - area.maxX(), area.y - point.y, point.y - area.maxY()});
}

/// Of a capsule that lies: the middles of its round ends are `radius` from its sides.
double fromEnd(const ui::Rect& rect, const ui::Point point) {
    const ui::Rect area = onPixels(rect);
    const double radius = area.height / 2;
    const double x = std::clamp(point.x, area.x + radius, area.maxX() - radius);
    return std::hypot(point.x - x, point.y - (area.y + radius)) - radius;
}

/// Up to a pixel beyond where the end begins: curves are drawn by approximation.
bool isAtAnEnd(const ui::Rect& rect, const ui::Point point) {
    const ui::Rect area = onPixels(rect);
    const double length = area.height / 2 + 1;
    return point.x < area.x + length || point.x > area.maxX() - length;
}

Coverage within(const ui::ShapeKind shape, const ui::Rect& rect, const ui::Point point) {
    if (shape == ui::ShapeKind::circle) return round(fromCircle(rect, point));
    if (shape == ui::ShapeKind::capsule && isAtAnEnd(rect, point)) return round(fromEnd(rect, point));
    return straight(fromRectangle(rect, point));
}

/// The line lies half on each side of the outline, and its outer side on whole pixels.
Coverage along(const ui::Stroke& stroke, const ui::Point point) {
    const double line = std::max(onPixels(stroke.lineWidth), 1.0);
    const double half = stroke.lineWidth / 2;
    const ui::Rect outer{stroke.rect.x - half, stroke.rect.y - half, stroke.rect.width + stroke.lineWidth,
                         stroke.rect.height + stroke.lineWidth};
    const bool isRound = stroke.shape == ui::ShapeKind::circle;
    const double outside = isRound ? fromCircle(outer, point) : fromRectangle(outer, point);
    const double distance = std::max(outside, -outside - line);
    return isRound ? round(distance) : straight(distance);
}

double fromSegment(const ui::Point from, const ui::Point to, const ui::Point point) {
    const double x = to.x - from.x;
    const double y = to.y - from.y;
    const double share = std::clamp(((point.x - from.x) * x + (point.y - from.y) * y) / (x * x + y * y), 0.0, 1.0);
    return std::hypot(point.x - from.x - share * x, point.y - from.y - share * y);
}

/// A small arrow downwards, its tip below the middle.
Coverage along(const ui::MenuIndicator& indicator, const ui::Point point) {
    constexpr double arm = 3.5;
    constexpr double halfLine = 0.75;
    const ui::Point tip{indicator.rect.x + indicator.rect.width / 2,
                        onPixels(indicator.rect.y + indicator.rect.height / 2 + 2)};
    const double left = fromSegment({tip.x - arm, tip.y - arm}, tip, point);
    const double right = fromSegment({tip.x + arm, tip.y - arm}, tip, point);
    return round(std::min(left, right) - halfLine);
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

/// Lays on one pixel what a scene has there.
class Painter {
public:
    Painter(Pixel& pixel, const ui::Point middle) : pixel_{pixel}, middle_{middle} {}

    void paint(const std::vector<ui::SceneNode>& nodes) {
        for (const ui::SceneNode& node : nodes)
            std::visit([this](const auto& value) { paint(value); }, node.value);
    }

private:
    void paint(const ui::Fill& fill) { lay(pixel_, fill.color, within(fill.shape, fill.rect, middle_)); }
    void paint(const ui::Stroke& stroke) { lay(pixel_, stroke.color, along(stroke, middle_)); }
    void paint(const ui::MenuIndicator& indicator) { lay(pixel_, indicator.color, along(indicator, middle_)); }
    void paint(const ui::Control& control) { paint(control.content); }
    void paint(const ui::TextRun&) {}
    void paint(const ui::ImageRun&) {}
    void paint(const ui::Clip& clip) {
        Pixel content = pixel_;
        Painter{content, middle_}.paint(clip.content);
        const Channels& color = content.color;
        const ui::Color seen{color.red / 255, color.green / 255, color.blue / 255, 1};
        lay(pixel_, seen, within(clip.shape, clip.rect, middle_));
    }

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

void collect(const std::vector<ui::SceneNode>& nodes, std::vector<ui::Rect>& found) {
    const auto add = [&](const ui::Rect& rect) {
        const double x = std::floor(rect.x);
        const double y = std::floor(rect.y);
        found.push_back({x, y, std::ceil(rect.maxX()) - x, std::ceil(rect.maxY()) - y});
    };
    for (const ui::SceneNode& node : nodes) {
        if (const auto* text = std::get_if<ui::TextRun>(&node.value)) add(text->rect);
        if (const auto* image = std::get_if<ui::ImageRun>(&node.value)) add(image->rect);
        if (const auto* clip = std::get_if<ui::Clip>(&node.value)) collect(clip->content, found);
        if (const auto* control = std::get_if<ui::Control>(&node.value)) collect(control->content, found);
    }
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
            lay(pixel, ground, {1, false});
            Painter{pixel, {x + 0.5 - safeArea_.leading, y + 0.5 - safeArea_.top}}.paint(scene.nodes);
            pixels_.push_back(pixel);
        }
    }
}

std::vector<std::string> PlainPicture::differences(const Seen& seen, const std::vector<ui::Rect>& leftOut) const {
    constexpr std::size_t enough = 10;
    std::vector<std::string> found;
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_ && found.size() < enough; ++x) {
            const ui::Point middle{x + 0.5 - safeArea_.leading, y + 0.5 - safeArea_.top};
            const bool isLeftOut = std::any_of(leftOut.begin(), leftOut.end(),
                                               [&](const ui::Rect& rect) { return contains(rect, middle); });
            if (isLeftOut || isNear(seen(x, y), at(x, y))) continue;
            std::ostringstream text;
            text << x - safeArea_.leading << ',' << y - safeArea_.top << " is " << written(seen(x, y)) << " and not "
                 << written(at(x, y).color) << ", give or take " << at(x, y).leeway;
            found.push_back(text.str());
        }
    }
    return found;
}

std::vector<ui::Rect> textsAndImages(const ui::Scene& scene) {
    std::vector<ui::Rect> found;
    collect(scene.nodes, found);
    return found;
}

ui::Scene withoutTextsAndImages(ui::Scene scene) {
    empty(scene.nodes);
    return scene;
}

} // namespace platform::fake
