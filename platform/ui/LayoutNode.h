#pragma once

#include "platform/ui/Geometry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

// The second stage. A parent proposes a size, the child chooses its own, the parent places it.

namespace platform::ui {

class SceneWriter;

/// A size offered. An unset length asks for what the view would take of its own accord. Lengths are finite.
struct Proposal {
    std::optional<double> width = std::nullopt;
    std::optional<double> height = std::nullopt;
    friend bool operator==(const Proposal&, const Proposal&) = default;
};

/// One thing to lay out. Made anew for each layout from a description; remembers its size per proposal, so that the
/// cost of a layout grows with the number of nodes.
class LayoutNode {
public:
    LayoutNode() = default;
    LayoutNode(const LayoutNode&) = delete;
    LayoutNode& operator=(const LayoutNode&) = delete;
    virtual ~LayoutNode() = default;

    /// The size chosen when offered `proposal`; never infinite, never NaN.
    Size size(const Proposal& proposal);
    /// Writes what is seen, its top left at `origin`, as large as it chose for `proposal`.
    virtual void place(Point origin, const Proposal& proposal, SceneWriter& writer) = 0;

    /// What stands behind the modifiers around it.
    virtual const LayoutNode& core() const { return *this; }
    virtual bool isText() const { return false; }
    /// Its minimum length along the stack, if it is a spacer.
    virtual std::optional<double> spacerMinimum() const { return std::nullopt; }

protected:
    virtual Size measure(const Proposal& proposal) = 0;

private:
    std::vector<std::pair<Proposal, Size>> sizes_;
};

/// A child of a stack or a row, with the steps that lead to it from there.
struct LayoutMember {
    std::unique_ptr<LayoutNode> node;
    std::vector<std::uint32_t> steps = {};
    /// How many of the steps lead to a row; 0 if the member is in none.
    std::size_t rowLength = 0;
};

/// A node around one other, of the same size unless it measures otherwise.
class WrappingLayoutNode : public LayoutNode {
public:
    explicit WrappingLayoutNode(std::unique_ptr<LayoutNode> content) : content_{std::move(content)} {}
    const LayoutNode& core() const override { return content_->core(); }

protected:
    LayoutNode& content() const { return *content_; }
    Size measure(const Proposal& proposal) override { return content_->size(proposal); }

private:
    std::unique_ptr<LayoutNode> content_;
};

/// The sum of two lengths, never beyond the greatest finite one.
double sumOf(double a, double b);
/// How far inside `outer` something as long as `inner` begins.
double offset(HorizontalAlignment alignment, double outer, double inner);
double offset(VerticalAlignment alignment, double outer, double inner);
Point offset(Alignment alignment, Size outer, Size inner);

} // namespace platform::ui
