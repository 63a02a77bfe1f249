#include "platform/ui/Interaction.h"

#include <algorithm>
#include <random>

namespace platform::ui {
namespace {

/// Control `step` of row `row`, 30 points below the row before: nearer than its neighbor in the row.
Control control(const std::uint32_t row, const std::uint32_t step) {
    return {{step * 40.0, row * 30.0, 20, 20}, {{2, row, step}, 2}, "control", PushButton{}, {}};
}

Scene sceneOf(const std::vector<Control>& controls) {
    Scene scene;
    for (const Control& control : controls)
        scene.nodes.push_back({control});
    return scene;
}

constexpr std::uint32_t actionStep = 4;
constexpr std::uint32_t menuStep = 5;

std::optional<Place> focus(const std::vector<Control>& before, const std::vector<Control>& after,
                           const Control& focused) {
    return focusAfter(sceneOf(before), sceneOf(after), focused.place);
}

TEST(KeyboardFocus, MovesToTheNextControlOfTheRowIfItsControlIsGone) {
    const Control above = control(0, actionStep);
    const Control gone = control(1, actionStep);
    const Control next = control(1, menuStep);
    EXPECT_EQ(focus({above, gone, next}, {above, next}, gone), next.place);
}

TEST(KeyboardFocus, MovesToThePreviousControlIfTheLastOfTheRowIsGone) {
    const Control before = control(0, actionStep);
    const Control gone = control(0, menuStep);
    const Control below = control(1, menuStep);
    EXPECT_EQ(focus({before, gone, below}, {before, below}, gone), before.place);
}

TEST(KeyboardFocus, MovesToTheNearestControlIfItsRowIsGone) {
    EXPECT_EQ(focus({control(0, actionStep), control(3, actionStep), control(4, actionStep)},
                    {control(0, actionStep), control(4, actionStep), control(9, actionStep)}, control(3, actionStep)),
              control(4, actionStep).place);
}

TEST(KeyboardFocus, MeasuresTheDistanceBetweenCenters) {
    const auto at = [](const std::uint32_t row, const Rect& rect) {
        return Control{rect, {{row}, 1}, "control", PushButton{}, {}};
    };
    const Control gone = at(0, {100, 100, 20, 20});
    const Control large = at(1, {130, 100, 100, 20});
    const Control below = at(2, {100, 160, 20, 20});
    const Control aside = at(3, {50, 100, 20, 20});
    EXPECT_EQ(focus({gone, large, below, aside}, {large, below, aside}, gone), aside.place);
    EXPECT_EQ(focus({gone, large, below}, {large, below}, gone), below.place);
}

TEST(KeyboardFocus, MovesToTheFirstControlIfItHadNone) {
    EXPECT_EQ(focus({}, {control(1, actionStep), control(0, menuStep)}, control(7, actionStep)),
              control(1, actionStep).place);
    EXPECT_EQ(focus({control(0, actionStep)}, {}, control(0, actionStep)), std::nullopt);
}

TEST(AButtonReplacedByAnother, PassesFocusToIt) {
    Control upgrade = control(1, actionStep);
    upgrade.place.steps.push_back(0);
    EXPECT_EQ(
        focus({control(1, actionStep), control(1, menuStep)}, {upgrade, control(1, menuStep)}, control(1, actionStep)),
        upgrade.place);
}

TEST(KeyboardFocus, StaysOnAControlThroughAnyNumberOfRebuilds) {
    std::mt19937 random{7};
    std::vector<Control> before{control(0, menuStep), control(1, menuStep)};
    Place focused = control(0, menuStep).place;
    for (int rebuild = 0; rebuild < 1000; ++rebuild) {
        std::vector<Control> after{control(0, menuStep), control(1, menuStep)};
        for (const std::uint32_t row : {0u, 1u})
            if (random() % 2 == 0) after.push_back(control(row, actionStep));
        const bool stays =
            std::any_of(after.begin(), after.end(), [&](const Control& c) { return c.place == focused; });
        const auto next = focusAfter(sceneOf(before), sceneOf(after), focused);
        ASSERT_TRUE(next.has_value());
        ASSERT_EQ(*next == focused, stays);
        ASSERT_EQ(next->steps[1], focused.steps[1]) << "the row";
        focused = random() % 3 == 0 ? after[random() % after.size()].place : *next;
        before = std::move(after);
    }
}

/// The hit area of a menu of 10 by 14 at `origin` beside a button at `neighbor`.
Rect areaOfMenuBeside(const Rect& neighbor, const Point origin = {200, 100}) {
    const Control menu{{origin.x, origin.y, 10, 14}, {{1}, 0}, "menu", PullDownMenu{}, {}};
    const Control button{neighbor, {{2}, 0}, "button", PushButton{}, {}};
    return hitArea(sceneOf({menu, button}), menu);
}

TEST(APressOnAMenu, CountsEightPointsAroundItsIndicator) {
    EXPECT_EQ(areaOfMenuBeside({100, 0, 10, 10}), (Rect{192, 92, 26, 30}));
    EXPECT_EQ(areaOfMenuBeside({190, 90, 40, 40}), (Rect{192, 92, 26, 30})) << "also on what lies under it";
}

TEST(APressOnAMenu, DoesNotCountOnAControlBesideIt) {
    EXPECT_EQ(areaOfMenuBeside({160, 90, 35, 30}), (Rect{195, 92, 23, 30})) << "to its left";
    EXPECT_EQ(areaOfMenuBeside({213, 90, 35, 30}), (Rect{192, 92, 21, 30})) << "to its right";
    EXPECT_EQ(areaOfMenuBeside({190, 60, 30, 37}), (Rect{192, 97, 26, 25})) << "above it";
    EXPECT_EQ(areaOfMenuBeside({190, 116, 30, 30}), (Rect{192, 92, 26, 24})) << "below it";
    EXPECT_EQ(areaOfMenuBeside({33, 290, 35, 30}, {20, 300}), (Rect{12, 292, 21, 30})) << "lower in the window";
}

TEST(APressOnAMenu, CountsUpToAnAdjacentControl) {
    const Rect whole{192, 92, 26, 30};
    for (const Rect& neighbor : {Rect{160, 90, 32, 30}, Rect{218, 90, 32, 30}, Rect{190, 60, 30, 32},
                                 Rect{190, 122, 30, 9}, Rect{160, 60, 35, 32}, Rect{160, 122, 35, 9}})
        EXPECT_EQ(areaOfMenuBeside(neighbor), whole);
    EXPECT_EQ(areaOfMenuBeside({160, 90, 40, 30}), (Rect{200, 92, 18, 30}));
    EXPECT_EQ(areaOfMenuBeside({210, 90, 40, 30}), (Rect{192, 92, 18, 30}));
    EXPECT_EQ(areaOfMenuBeside({190, 60, 30, 40}), (Rect{192, 100, 26, 22}));
    EXPECT_EQ(areaOfMenuBeside({190, 114, 30, 40}), (Rect{192, 92, 26, 22}));
}

TEST(APressOnAButton, CountsOnlyOnTheButton) {
    const Control button{{100, 100, 80, 30}, {{1}, 0}, "button", PushButton{}, {}};
    EXPECT_EQ(hitArea(sceneOf({button}), button), button.rect);
}

SceneNode text(const char* words) {
    return {TextRun{{}, words, {}, {}}};
}

SceneNode image(const char* name) {
    return {ImageRun{{}, {"Ethernet"}, {}, name}};
}

/// The reading order of `after`, each member with the index of its predecessor.
std::string followed(const Scene& before, const Scene& after) {
    const Cases name{[](const TextRun* run) { return run->text; },
                     [](const auto* named) { return named->accessibleName; }};
    const auto found = predecessors(before, after);
    const auto order = readingOrder(after);
    std::string text;
    for (std::size_t i = 0; i < order.size(); ++i)
        text += std::visit(name, order[i]) + (found.at(i) ? " " + std::to_string(*found[i]) : "") + "\n";
    return text;
}

TEST(TheReadingOrder, IsThePaintingOrderWithoutUnnamedImages) {
    Control button = control(0, actionStep);
    button.content = {text("Go")};
    const Scene scene{{}, {}, {{Fill{}}, text("a"), {Clip{{}, {}, {image("b"), {button}}}}, image(""), text("c")}};
    EXPECT_EQ(followed({}, scene), "a\nb\ncontrol\nc\n");
    EXPECT_EQ(controlsOf(scene),
              std::vector{&std::get<Control>(std::get<Clip>(scene.nodes[2].value).content[1].value)});
}

TEST(ATextOrImage, ContinuesTheOneOfTheSameKindAndNumber) {
    const Scene before{{}, {}, {text("a"), image("b"), text("c")}};
    EXPECT_EQ(followed(before, {{}, {}, {image("d"), text("e"), image("f"), text("g"), text("h")}}),
              "d 1\ne 0\nf\ng 2\nh\n");
}

TEST(AControl, ContinuesTheOneOfTheSameKindAtItsPlace) {
    Control other = control(1, actionStep);
    other.kind = PullDownMenu{};
    const Control first = control(0, actionStep);
    const Control second = control(1, actionStep);
    EXPECT_EQ(followed(sceneOf({first, second}), sceneOf({second, first, control(2, actionStep)})),
              "control 1\ncontrol 0\ncontrol\n");
    EXPECT_EQ(followed(sceneOf({first, second}), sceneOf({first, other})), "control 0\ncontrol\n");
    const Place place{{0}, 0};
    EXPECT_EQ(followed({{}, {}, {text("a"), image("b")}},
                       sceneOf({{{}, place, "button", PushButton{}, {}}, {{}, place, "menu", PullDownMenu{}, {}}})),
              "button\nmenu\n");
}

} // namespace
} // namespace platform::ui
