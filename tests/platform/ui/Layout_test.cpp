#include "platform/ui/SceneHost.h"

#include "platform/ui/Elements.h"
#include "platform/ui/Interaction.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/SceneText.h"

#include <cmath>
#include <set>

namespace platform::ui {
namespace {

/// A white area that takes exactly this size.
View box(const double width, const double height) {
    return EmptyView{}.frame({.width = width, .height = height}).background(Color::white);
}

/// A white area that takes what is offered.
View area() {
    return EmptyView{}.frame({.maxWidth = infinity, .maxHeight = infinity}).background(Color::white);
}

/// The scene of `view` as text, laid out in an area of this size.
std::string scene(const View& view, const double width = 100, const double height = 100,
                  const EdgeInsets safeArea = {}) {
    return fake::sceneOf(view, Size{width, height}, safeArea);
}

Size ownSize(const View& view) {
    const fake::FixedMetrics metrics;
    return layout(view, std::nullopt, metrics).size;
}

// Ten characters of callout are 54 by 15, of body 58.5 by 16.25.
const char* ten = "0123456789";

TEST(AView, IsCentredInTheAreaItIsLaidOutIn) {
    EXPECT_EQ(scene(box(20, 10)), "fill rectangle 40,45 20x10 white\n");
}

TEST(AView, LargerThanTheAreaOverflowsEvenly) {
    EXPECT_EQ(scene(box(120, 10)), "fill rectangle -10,45 120x10 white\n");
}

TEST(AVerticalStack, LeavesEightPointsBetweenNeighbours) {
    EXPECT_EQ(scene(VStack{HorizontalAlignment::center, box(10, 10), box(20, 10)}),
              "fill rectangle 45,36 10x10 white\n"
              "fill rectangle 40,54 20x10 white\n");
}

TEST(AHorizontalStack, LeavesEightPointsBetweenNeighbours) {
    EXPECT_EQ(scene(HStack{VerticalAlignment::center, box(10, 10), box(10, 20)}), "fill rectangle 36,45 10x10 white\n"
                                                                                  "fill rectangle 54,40 10x20 white\n");
}

TEST(AStackOfViews, LeavesNothingBesideASpacer) {
    EXPECT_EQ(scene(HStack{VerticalAlignment::center, box(10, 10), Spacer{}, box(10, 10)}),
              "fill rectangle 0,45 10x10 white\n"
              "fill rectangle 90,45 10x10 white\n");
}

TEST(AVerticalStack, LeavesTwoPointsBetweenTexts) {
    EXPECT_EQ(ownSize(VStack{HorizontalAlignment::center, Text::verbatim("a"), Text::verbatim("b")}).height,
              16.25 + 2 + 16.25);
}

TEST(AVerticalStack, SeesTextsThroughTheirModifiers) {
    const View framed = Text::verbatim("a").font(Font::callout).frame({.width = 30});
    EXPECT_EQ(ownSize(VStack{HorizontalAlignment::center, framed, framed.padding(0)}).height, 15 + 2 + 15);
}

TEST(AHorizontalStack, LeavesEightPointsBetweenTexts) {
    EXPECT_EQ(ownSize(HStack{VerticalAlignment::center, Text::verbatim(ten), Text::verbatim(ten)}).width,
              58.5 + 8 + 58.5);
}

TEST(AVerticalStack, LeavesEightPointsBetweenATextAndAnythingElse) {
    EXPECT_EQ(ownSize(VStack{HorizontalAlignment::center, Text::verbatim("a"), box(1, 1)}).height, 16.25 + 8 + 1);
}

TEST(AStackOfViews, AlignsItsMembersAcrossItsAxis) {
    EXPECT_EQ(scene(VStack{HorizontalAlignment::leading, box(10, 10), box(20, 10)}.frame({.width = 20})),
              "fill rectangle 40,36 10x10 white\n"
              "fill rectangle 40,54 20x10 white\n");
}

TEST(AStackOfViews, ThatDoesNotFitOverflowsEvenly) {
    EXPECT_EQ(scene(HStack{VerticalAlignment::center, box(60, 10), box(60, 10)}), "fill rectangle -14,45 60x10 white\n"
                                                                                  "fill rectangle 54,45 60x10 white\n");
}

TEST(AStackOfViews, CountsTheMembersOfRowsAsItsOwnAndAnEmptyRowAsNone) {
    const auto row = [](const std::size_t index) { return index == 1 ? Group{} : Group{box(10, 10), Divider{}}; };
    EXPECT_EQ(scene(VStack{HorizontalAlignment::center, ForEach{3, row}, box(10, 10)}),
              "fill rectangle 45,18 10x10 white\n"
              "fill rectangle 0,36 100x1 0/0/0@0.1\n"
              "fill rectangle 45,45 10x10 white\n"
              "fill rectangle 0,63 100x1 0/0/0@0.1\n"
              "fill rectangle 45,72 10x10 white\n");
}

TEST(AStackOfViews, WithNothingInItIsNothing) {
    EXPECT_EQ(ownSize(HStack{VerticalAlignment::center, EmptyView{}}), Size{});
}

TEST(AnEmptyStack, StillCountsAsAMember) {
    EXPECT_EQ(ownSize(HStack{VerticalAlignment::center, HStack{VerticalAlignment::center}, box(10, 10)}).width, 18);
}

TEST(ADepthStack, LaysItsMembersOneOverTheOther) {
    EXPECT_EQ(scene(ZStack{Alignment::center, box(20, 10), box(10, 20)}), "fill rectangle 40,45 20x10 white\n"
                                                                          "fill rectangle 45,40 10x20 white\n");
}

TEST(ASpacer, IsEightLongAtTheLeastAndTakesNothingAcross) {
    EXPECT_EQ(ownSize(HStack{VerticalAlignment::center, Spacer{}}), (Size{8, 0}));
    EXPECT_EQ(ownSize(VStack{HorizontalAlignment::center, Spacer{}}), (Size{0, 8}));
}

TEST(ADivider, IsOneHighOverTheWidthOffered) {
    EXPECT_EQ(scene(VStack{HorizontalAlignment::center, Divider{}}), "fill rectangle 0,49.5 100x1 0/0/0@0.1\n");
}

TEST(ALineOfText, TakesItsOwnSize) {
    EXPECT_EQ(ownSize(Text::verbatim(ten)), fake::FixedMetrics{}.textSize(ten, Font::body));
}

TEST(ALineOfText, KeepsItsSizeWhereItLacksLessThanAPoint) {
    EXPECT_EQ(scene(Text::verbatim(ten), 57.6, 16.25), "text -0.45,0 58.5x16.25 body black \"0123456789\"\n");
}

TEST(ALineOfText, IsTruncatedWhereItLacksMore) {
    EXPECT_EQ(scene(Text::verbatim(ten), 57.4, 16.25), "text 0,0 57.4x16.25 body black \"0123456789\" truncated\n");
}

TEST(ALineOfText, IsNeverReadAsAnythingElse) {
    EXPECT_EQ(scene(Text::verbatim("<b>&amp;"), 46.8, 16.25), "text 0,0 46.8x16.25 body black \"<b>&amp;\"\n");
}

TEST(ALineOfText, TakesBodyAndBlackWhereNothingIsSet) {
    EXPECT_EQ(scene(Text::verbatim("a"), 5.85, 16.25), "text 0,0 5.85x16.25 body black \"a\"\n");
}

TEST(ALineOfText, TakesTheFontAndColourAroundIt) {
    const View stack =
        HStack{VerticalAlignment::center, Text::verbatim("a")}.font(Font::callout).foregroundColor(Color::gray);
    EXPECT_EQ(scene(stack, 5.4, 15), "text 0,0 5.4x15 callout gray \"a\"\n");
}

TEST(ALineOfText, PrefersItsOwnFontAndColour) {
    const View text = Text::verbatim("a").font(Font::title3).foregroundColor(Color::white);
    EXPECT_EQ(scene(text.font(Font::callout).foregroundColor(Color::gray), 6.75, 18.75),
              "text 0,0 6.75x18.75 title3 white \"a\"\n");
}

TEST(AWeight, TakesThePlaceOfTheFontsOwnWhereverItIsSet) {
    EXPECT_EQ(scene(Text::verbatim("a").font(Font::title3).fontWeight(FontWeight::semibold), 6.75, 18.75),
              "text 0,0 6.75x18.75 title3 semibold black \"a\"\n");
    EXPECT_EQ(scene(Text::verbatim("a").fontWeight(FontWeight::semibold).font(Font::callout), 5.4, 15),
              "text 0,0 5.4x15 callout semibold black \"a\"\n");
}

TEST(AnImage, TakesItsOwnSize) {
    fake::FixedMetrics metrics;
    metrics.images["Ethernet"] = {24, 16};
    EXPECT_EQ(layout(Image::named("Ethernet"), std::nullopt, metrics).size, (Size{24, 16}));
}

TEST(AResizableImage, TakesWhatIsOffered) {
    EXPECT_EQ(scene(Image::named("Ethernet").resizable()), "image 0,0 100x100 \"Ethernet\"\n");
}

TEST(AMissingImage, IsAnEmptyAreaOfTheSameSize) {
    EXPECT_EQ(ownSize(Image::named("Missing")), Size{});
    EXPECT_EQ(ownSize(Image::named("Missing").resizable().frame({.width = 22, .height = 22})), (Size{22, 22}));
}

TEST(ASymbol, TakesTheForegroundColour) {
    EXPECT_EQ(scene(Image::system("trash").resizable().foregroundColor(Color::gray)),
              "image 0,0 100x100 system gray \"trash\"\n");
}

TEST(AFixedFrame, HasTheLengthThatIsSetAndElseTheContents) {
    EXPECT_EQ(ownSize(box(10, 10).frame({.width = 30})), (Size{30, 10}));
}

TEST(AFixedFrame, TakesTheLengthOfferedWhereItIsInfinite) {
    EXPECT_EQ(scene(box(10, 10).frame({.width = infinity, .alignment = Alignment::trailing})),
              "fill rectangle 90,45 10x10 white\n");
    EXPECT_EQ(ownSize(box(10, 10).frame({.width = infinity})), (Size{10, 10}));
}

TEST(AFixedFrame, PlacesItsContentByItsAlignment) {
    EXPECT_EQ(scene(box(10, 10).frame({.width = 30, .alignment = Alignment::leading})),
              "fill rectangle 35,45 10x10 white\n");
    EXPECT_EQ(scene(box(10, 10).frame({.width = 30, .alignment = Alignment::center})),
              "fill rectangle 45,45 10x10 white\n");
}

TEST(AFixedFrame, OffersItsLengthToItsContent) {
    EXPECT_EQ(scene(area().frame({.width = 30, .height = 20})), "fill rectangle 35,40 30x20 white\n");
}

TEST(AFrameOfTheGreatestLength, PinsItsContentToTheLeadingEdge) {
    const View text = Text::verbatim("a").frame({.width = greatestFiniteMagnitude, .alignment = Alignment::leading});
    EXPECT_EQ(scene(text.frame({.width = 50, .height = 16.25, .alignment = Alignment::leading}), 50, 16.25),
              "text 0,0 5.85x16.25 body black \"a\"\n");
}

TEST(AFrameOfTheGreatestLength, NeverMakesALengthInfinite) {
    const View wide = box(1, 1).frame({.width = greatestFiniteMagnitude, .height = greatestFiniteMagnitude});
    const View stacks = VStack{HorizontalAlignment::center, HStack{VerticalAlignment::center, wide, Spacer{}, wide},
                               wide.padding().border(Color::black, 2)};
    const Size size = ownSize(stacks.frame({.maxWidth = infinity}).padding());
    EXPECT_TRUE(std::isfinite(size.width) && std::isfinite(size.height));
    EXPECT_EQ(scene(stacks).find("nan"), std::string::npos);
    EXPECT_EQ(scene(stacks).find("inf"), std::string::npos);
}

TEST(AFlexibleFrame, ClampsTheLengthOfferedToTheBoundThatIsSet) {
    EXPECT_EQ(scene(area().frame({.maxHeight = 60})), "fill rectangle 0,20 100x60 white\n");
    EXPECT_EQ(scene(area().frame({.maxHeight = 160})), "fill rectangle 0,0 100x100 white\n");
    EXPECT_EQ(scene(area().frame({.minHeight = 160})), "fill rectangle 0,-30 100x160 white\n");
}

TEST(AFlexibleFrame, IsNeverSmallerThanItsContentUnlessTheBoundIs) {
    EXPECT_EQ(ownSize(VStack{HorizontalAlignment::center, box(10, 80).frame({.maxHeight = 90})}.frame({.height = 50})),
              (Size{10, 50}));
    const auto heightIn = [](const FlexibleFrame& frame, const double offered) {
        const fake::FixedMetrics metrics;
        const View view = box(10, 80).frame(frame).background(Color::black);
        const auto scene = layout(view, Size{10, offered}, metrics);
        return std::get<Fill>(scene.nodes.front().value).rect.height;
    };
    EXPECT_EQ(heightIn({.maxHeight = 90}, 50), 80);
    EXPECT_EQ(heightIn({.maxHeight = 60}, 70), 60);
    EXPECT_EQ(heightIn({.minHeight = 20}, 50), 50);
}

TEST(AFlexibleFrame, TakesTheContentsLengthWhereNoBoundIsSet) {
    EXPECT_EQ(scene(box(10, 10).frame({.maxWidth = infinity}).background(Color::black)),
              "fill rectangle 0,45 100x10 black\n"
              "fill rectangle 45,45 10x10 white\n");
}

TEST(AFlexibleFrame, PlacesItsContentByItsAlignment) {
    EXPECT_EQ(scene(box(10, 10).frame({.maxWidth = infinity, .maxHeight = infinity, .alignment = Alignment::leading})),
              "fill rectangle 0,45 10x10 white\n");
}

TEST(Padding, IsSixteenWhereNoLengthIsGiven) {
    EXPECT_EQ(ownSize(box(10, 10).padding()), (Size{42, 42}));
}

TEST(Padding, AddsToTheEdgesThatItNames) {
    EXPECT_EQ(ownSize(box(10, 10).padding(Edge::horizontal, 3)), (Size{16, 10}));
    EXPECT_EQ(ownSize(box(10, 10).padding(Edge::vertical, 3)), (Size{10, 16}));
    EXPECT_EQ(scene(box(10, 10).padding(Edge::trailing, 8)), "fill rectangle 41,45 10x10 white\n");
}

TEST(Padding, IsTakenOffWhatTheContentIsOffered) {
    EXPECT_EQ(scene(area().padding(10)), "fill rectangle 10,10 80x80 white\n");
}

TEST(ABackground, CoversTheViewAndLiesBehindIt) {
    EXPECT_EQ(scene(box(10, 10).padding(5).background(Color::black)), "fill rectangle 40,40 20x20 black\n"
                                                                      "fill rectangle 45,45 10x10 white\n");
}

TEST(ABackground, RunsOnUnderEverySafeAreaEdgeThatTheViewTouches) {
    const EdgeInsets insets{28, 3, 5, 7};
    EXPECT_EQ(scene(area(), 100, 100, insets), "fill rectangle -3,-28 110x133 white\n");
    EXPECT_EQ(scene(area().frame({.height = 100, .alignment = Alignment::leading}).frame({.width = 40}), 40, 100,
                    {28, 0, 0, 0}),
              "fill rectangle 0,-28 40x128 white\n");
}

TEST(ABackground, DoesNotRunOnWhereTheViewTouchesNoEdge) {
    EXPECT_EQ(scene(box(10, 10), 100, 100, {28, 3, 5, 7}), "fill rectangle 45,45 10x10 white\n");
}

TEST(ABackgroundOfAView, IsOfferedTheViewsSizeAndLiesBehindIt) {
    EXPECT_EQ(scene(box(40, 40).background(Circle{}.stroke(Color::black, 2).padding(2))),
              "stroke circle 32,32 36x36 black 2\n"
              "fill rectangle 30,30 40x40 white\n");
}

TEST(ABorder, IsDrawnOverTheContentInsetByHalfItsWidth) {
    EXPECT_EQ(scene(box(20, 20).border(Color::gray, 2)), "fill rectangle 40,40 20x20 white\n"
                                                         "stroke rectangle 41,41 18x18 gray 2\n");
}

TEST(AClip, CutsWhatCameBeforeIt) {
    EXPECT_EQ(scene(box(20, 10).clipShape(Capsule{}).background(Color::black)), "fill rectangle 40,45 20x10 black\n"
                                                                                "clip capsule 40,45 20x10\n"
                                                                                "  fill rectangle 40,45 20x10 white\n");
}

TEST(AMenu, IsAnIndicatorWithItsItems) {
    const Menu menu{"", {Button{Label{"Remove", "trash"}, [] {}}}};
    EXPECT_EQ(scene(menu.accessibilityLabel("Actions"), 10, 16), "menu 0,0 10x16 \"Actions\"\n"
                                                                 "  item \"Remove\" \"trash\"\n"
                                                                 "  indicator 0,0 10x16 black\n");
}

TEST(AButton, IsNamedByItsTitleUnlessALabelDoes) {
    EXPECT_EQ(scene(Button{"Go", [] {}}, 11.7, 16.25), "button 0,0 11.7x16.25 \"Go\"\n"
                                                       "  text 0,0 11.7x16.25 body black \"Go\"\n");
    EXPECT_EQ(scene(Button{"Go", [] {}}.accessibilityLabel("Go on"), 11.7, 16.25),
              "button 0,0 11.7x16.25 \"Go on\"\n"
              "  text 0,0 11.7x16.25 body black \"Go\"\n");
}

TEST(AControlBehindAnother, HasAPlaceOfItsOwn) {
    const View button = Button{"Go", [] {}};
    const View row = HStack{VerticalAlignment::center, button, button};
    const fake::FixedMetrics metrics;
    const Scene laidOut = layout(row.background(row).background(button), std::nullopt, metrics);
    std::set<std::vector<std::uint32_t>> places;
    for (const Control* control : controlsOf(laidOut))
        places.insert(control->place.steps);
    EXPECT_EQ(places.size(), 5u);
}

TEST(TheCostOfALayout, GrowsWithTheNumberOfNodesNotWithTheirDepth) {
    const auto measurements = [](const int depth) {
        View view = Text::verbatim(ten);
        for (int level = 0; level < depth; ++level)
            view = VStack{HorizontalAlignment::center, HStack{VerticalAlignment::center, view, Spacer{}}, Spacer{}};
        const fake::FixedMetrics metrics;
        layout(view, Size{400, 400}, metrics);
        return metrics.textMeasurements;
    };
    EXPECT_LE(measurements(40), measurements(4) + 40 * 8);
}

} // namespace
} // namespace platform::ui
