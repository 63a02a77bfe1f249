#include "platform/ui/ForEach.h"

#include "platform/ui/StackNode.h"

namespace platform::ui {

namespace {

class GroupNode : public StackNode {
public:
    explicit GroupNode(std::vector<View> children) : StackNode{"Group", std::move(children)} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        for (LayoutMember& member : this->members(environment))
            members.push_back(std::move(member));
    }
};

class RowsNode : public StackNode {
public:
    explicit RowsNode(std::vector<View> rows) : StackNode{"ForEach", std::move(rows)} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override {
        for (LayoutMember& member : this->members(environment)) {
            member.rowLength = 1;
            members.push_back(std::move(member));
        }
    }
};

std::vector<View> rowsOf(const std::size_t count, const std::function<View(std::size_t)>& row) {
    std::vector<View> rows;
    for (std::size_t index = 0; index < count; ++index)
        rows.push_back(row(index));
    return rows;
}

} // namespace

Group::Group(std::vector<View> children) : View{makeView<GroupNode>(std::move(children))} {
}

ForEach::ForEach(const std::size_t count, const std::function<View(std::size_t)>& row)
    : View{makeView<RowsNode>(rowsOf(count, row))} {
}

} // namespace platform::ui
