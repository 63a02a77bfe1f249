#include "platform/ui/Elements.h"
#include "platform/ui/Interaction.h"
#include "platform/ui/SceneHost.h"
#include "tests/support/FixedMetrics.h"
#include "tests/support/SceneText.h"

#include <cmath>
#include <set>
#include <sstream>

namespace platform::ui {
namespace {

using Lines = std::vector<std::string>;

constexpr Color red{1, 0, 0, 1};

/// An area that takes exactly this size.
View box(const double width, const double height, const Color color = Color::white) {
    return EmptyView{}.frame({.width = width, .height = height}).background(color);
}

/// A white area that takes what is offered.
View area() {
    return EmptyView{}.frame({.maxWidth = infinity, .maxHeight = infinity}).background(Color::white);
}

/// The scene of `view` in an area of this size, one line for each node.
Lines scene(const View& view, const Size size = {100, 60}, const EdgeInsets safeArea = {}) {
    std::istringstream text{fake::sceneOf(view, size, safeArea)};
    Lines lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

/// The size of `view` without an offer. The image is 24 by 16.
Size ownSize(const View& view) {
    fake::FixedMetrics metrics;
    metrics.images["Ethernet"] = {24, 16};
    return layout(view, std::nullopt, metrics).size;
}

View line(const char* text) {
    return Text::verbatim(text);
}

/// Views side by side, and one below the other, each in the middle of its stack.
template <typename... Views>
View across(const Views&... views) {
    return HStack{VerticalAlignment::center, views...};
}
template <typename... Views>
View down(const Views&... views) {
    return VStack{HorizontalAlignment::center, views...};
}

// Ten characters of callout are 54 by 15, of body 58.5 by 16.25.
const char* ten = "0123456789";

TEST(AView, IsCenteredInItsAreaAndOverflowsItEvenly) {
    EXPECT_EQ(scene(box(20, 10)), Lines{"fill rectangle 40,25 20x10 white"});
    EXPECT_EQ(scene(box(120, 70)), Lines{"fill rectangle -10,-5 120x70 white"});
}

struct Greeting {
    const char* name;
    View body() const { return Text::verbatim(name).font(Font::callout); }
};

TEST(AView, CanBeAnythingWithABody) {
    EXPECT_EQ(scene(across(Greeting{"a"}, box(1, 2))),
              (Lines{"text 42.8,22.5 5.4x15 callout black \"a\"", "fill rectangle 56.2,29 1x2 white"}));
}

TEST(AStackOfViews, LeavesEightPointsBetweenNeighbors) {
    EXPECT_EQ(scene(down(box(10, 4), box(20, 6, red))),
              (Lines{"fill rectangle 45,21 10x4 white", "fill rectangle 40,33 20x6 255/0/0"}));
    EXPECT_EQ(scene(across(box(10, 4), box(6, 20, red))),
              (Lines{"fill rectangle 38,28 10x4 white", "fill rectangle 56,20 6x20 255/0/0"}));
}

TEST(AStackOfViews, LeavesNoGapBesideASpacer) {
    EXPECT_EQ(scene(across(box(10, 4), Spacer{}, box(12, 6))),
              (Lines{"fill rectangle 0,28 10x4 white", "fill rectangle 88,27 12x6 white"}));
    EXPECT_EQ(scene(down(box(10, 4), Spacer{}, box(12, 6))),
              (Lines{"fill rectangle 45,0 10x4 white", "fill rectangle 44,54 12x6 white"}));
}

TEST(AStackOfViews, OffersTheRestToFlexibleMembersAndItsFullWidthToAll) {
    EXPECT_EQ(scene(across(area(), box(10, 4))),
              (Lines{"fill rectangle 0,0 82x60 white", "fill rectangle 90,28 10x4 white"}));
    EXPECT_EQ(scene(down(box(10, 4), area())),
              (Lines{"fill rectangle 45,0 10x4 white", "fill rectangle 0,12 100x48 white"}));
}

TEST(AStackOfViews, IsAsLongAsItsMembersAndAsWideAsTheWidest) {
    EXPECT_EQ(ownSize(down(box(10, 4), box(30, 6), box(20, 5))), (Size{30, 31}));
    EXPECT_EQ(ownSize(across(box(10, 4), box(30, 6), box(20, 5))), (Size{76, 6}));
}

TEST(AVerticalStack, LeavesTwoPointsBetweenTextsEvenWithModifiers) {
    const View callout = line("a").font(Font::callout);
    const double two = 15 + 2 + 15;
    for (const View& second : {callout, callout.frame({.width = 30}), callout.padding(0), callout.background(red),
                               callout.background(box(1, 1)), callout.fontWeight(FontWeight::semibold)})
        EXPECT_EQ(ownSize(down(callout, second)).height, two);
}

TEST(AStackOfViews, LeavesEightPointsBesideATextUnlessTextsAreStackedVertically) {
    const auto below = [](const View& view) { return ownSize(down(line("a"), view)); };
    EXPECT_EQ(below(box(1, 3)).height, 16.25 + 8 + 3);
    EXPECT_EQ(below(Button{"b", [] {}}).height, 16.25 + 8 + 16.25);
    EXPECT_EQ(below(Spacer{}).height, 16.25 + 8);
    EXPECT_EQ(ownSize(down(box(1, 3), line("a"))).height, 3 + 8 + 16.25);
    EXPECT_EQ(ownSize(across(line(ten), line(ten))).width, 58.5 + 8 + 58.5);
}

TEST(AStackOfViews, AlignsItsMembersAcrossItsAxis) {
    const auto x = [](const HorizontalAlignment alignment) {
        return scene(VStack{alignment, box(10, 4), box(20, 6)}).front();
    };
    EXPECT_EQ(x(HorizontalAlignment::leading), "fill rectangle 40,21 10x4 white");
    EXPECT_EQ(x(HorizontalAlignment::center), "fill rectangle 45,21 10x4 white");
    EXPECT_EQ(x(HorizontalAlignment::trailing), "fill rectangle 50,21 10x4 white");
}

TEST(AStackOfViews, ThatDoesNotFitOverflowsEvenly) {
    EXPECT_EQ(scene(across(box(60, 10), box(70, 12))),
              (Lines{"fill rectangle -19,25 60x10 white", "fill rectangle 49,24 70x12 white"}));
}

TEST(AStackOfViews, CountsTheMembersOfRowsAsItsOwn) {
    const auto row = [](const std::size_t index) {
        return index == 1 ? Group{} : Group{box(10 + static_cast<double>(index), 4), Divider{}};
    };
    EXPECT_EQ(scene(down(ForEach{3, row}, box(20, 6))),
              (Lines{"fill rectangle 45,6 10x4 white", "fill rectangle 0,18 100x1 0/0/0@0.1",
                     "fill rectangle 44,27 12x4 white", "fill rectangle 0,39 100x1 0/0/0@0.1",
                     "fill rectangle 40,48 20x6 white"}));
}

TEST(AStackOfViews, WithoutMembersIsEmptyButStillCountsAsAMember) {
    const View empty = across(EmptyView{});
    EXPECT_EQ(ownSize(empty), (Size{0, 0}));
    EXPECT_EQ(ownSize(across(empty, box(10, 4))).width, 18);
}

TEST(ADepthStack, PutsItsMembersOnTopOfEachOther) {
    const auto stack = [](const Alignment alignment) { return ZStack{alignment, box(20, 10), box(14, 30, red)}; };
    EXPECT_EQ(ownSize(stack(Alignment::center)), (Size{20, 30}));
    EXPECT_EQ(ownSize(ZStack{Alignment::center, box(20, 10), box(14, 12)}), (Size{20, 12}));
    EXPECT_EQ(scene(stack(Alignment::center)),
              (Lines{"fill rectangle 40,25 20x10 white", "fill rectangle 43,15 14x30 255/0/0"}));
    EXPECT_EQ(scene(stack(Alignment::leading)).back(), "fill rectangle 40,15 14x30 255/0/0");
    EXPECT_EQ(scene(stack(Alignment::trailing)).back(), "fill rectangle 46,15 14x30 255/0/0");
    EXPECT_EQ(scene(ZStack{Alignment::center, area()}), scene(area()));
}

TEST(SeveralViewsWithAModifier, AreStackedVertically) {
    const View column = down(box(10, 4), box(20, 6));
    EXPECT_EQ(scene(Group{box(10, 4), box(20, 6)}.padding(3)), scene(column.padding(3)));
    EXPECT_EQ(scene(Group{box(10, 4), box(20, 6)}.font(Font::callout)), scene(column));
    EXPECT_EQ(scene(Group{box(10, 4), box(20, 6)}.background(area())), scene(column.background(area())));
}

TEST(ASpacer, IsAtLeastEightLongAndHasNoWidth) {
    EXPECT_EQ(ownSize(across(Spacer{})), (Size{8, 0}));
    EXPECT_EQ(ownSize(down(Spacer{})), (Size{0, 8}));
    EXPECT_EQ(ownSize(down(across(Spacer{}))), (Size{8, 0}));
}

TEST(ADivider, IsOnePointThickAcrossItsStack) {
    EXPECT_EQ(scene(down(Divider{})), Lines{"fill rectangle 0,29.5 100x1 0/0/0@0.1"});
    EXPECT_EQ(scene(across(Divider{})), Lines{"fill rectangle 49.5,0 1x60 0/0/0@0.1"});
    EXPECT_EQ(ownSize(Divider{}), (Size{0, 1}));
}

TEST(ALineOfText, HasItsOwnSizeWhateverTheHeight) {
    EXPECT_EQ(fake::textOf(ownSize(line(ten))), "58.5x16.25");
    EXPECT_EQ(fake::textOf(ownSize(line(ten).frame({.height = 3}))), "58.5x3");
}

TEST(ALineOfText, IsTruncatedIfItLacksAPointOrMore) {
    const auto in = [](const double width) { return scene(line(ten), {width, 16.25}).front(); };
    EXPECT_EQ(in(57.6), "text -0.45,0 58.5x16.25 body black \"0123456789\"");
    EXPECT_EQ(in(57.5), "text 0,0 57.5x16.25 body black \"0123456789\" truncated") << "exactly one";
    EXPECT_EQ(in(0), "text 0,0 0x16.25 body black \"0123456789\" truncated");
}

TEST(ALineOfText, IsNeverReadAsMarkup) {
    EXPECT_EQ(scene(line("<b>&amp;"), {46.8, 16.25}), Lines{"text 0,0 46.8x16.25 body black \"<b>&amp;\""});
}

TEST(ALineOfText, InheritsFontAndColorUnlessItHasItsOwn) {
    const auto looks = [](const View& view) {
        return scene(across(view).font(Font::callout).foregroundColor(Color::gray)).front();
    };
    EXPECT_EQ(looks(line("a")), "text 47.3,22.5 5.4x15 callout gray \"a\"");
    EXPECT_EQ(looks(line("a").font(Font::title3).foregroundColor(red)),
              "text 46.625,20.625 6.75x18.75 title3 255/0/0 \"a\"");
}

TEST(AWeight, OverridesTheWeightOfTheFont) {
    const Font semibold{TextStyle::callout, FontWeight::semibold};
    const auto of = [](const View& view) { return scene(view, {5.4, 15}).front(); };
    for (const View& text : {line("a").font(Font::callout).fontWeight(FontWeight::semibold),
                             line("a").fontWeight(FontWeight::semibold).font(Font::callout), line("a").font(semibold)})
        EXPECT_EQ(of(text), "text 0,0 5.4x15 callout semibold black \"a\"");
    EXPECT_EQ(of(line("a").font(semibold).fontWeight(FontWeight::regular)), "text 0,0 5.4x15 callout black \"a\"");
}

TEST(AnAnnouncement, AppliesToTheTextsInside) {
    const View texts = across(line("a").accessibilityAnnounced(), line("b"));
    EXPECT_EQ(scene(texts, {19.7, 16.25}),
              (Lines{"text 0,0 5.85x16.25 body black \"a\" announced", "text 13.85,0 5.85x16.25 body black \"b\""}));
}

TEST(AnImage, HasItsOwnSizeWhateverIsOffered) {
    fake::FixedMetrics metrics;
    metrics.images["Ethernet"] = {24, 16};
    EXPECT_EQ(fake::textOf(layout(Image::named("Ethernet"), Size{100, 60}, metrics)),
              "image 38,22 24x16 \"Ethernet\"\n");
    EXPECT_EQ(ownSize(Image::named("Ethernet")), (Size{24, 16}));
    EXPECT_EQ(ownSize(Image::named("Ethernet").frame({.width = 30})), (Size{30, 16}));
    EXPECT_EQ(ownSize(across(Image::named("Ethernet")).padding(Edge::horizontal, 1)), (Size{26, 16}));
}

TEST(AResizableImage, TakesTheOfferedLengthOrItsOwn) {
    const View image = Image::named("Ethernet").resizable();
    EXPECT_EQ(scene(image), Lines{"image 0,0 100x60 \"Ethernet\""});
    EXPECT_EQ(ownSize(image), (Size{24, 16}));
    EXPECT_EQ(ownSize(image.frame({.width = 30})), (Size{30, 16}));
    EXPECT_EQ(ownSize(image.frame({.height = 30})), (Size{24, 30}));
}

TEST(AMissingImage, IsAnEmptyAreaOfTheSameSize) {
    EXPECT_EQ(ownSize(Image::named("Missing")), (Size{0, 0}));
    EXPECT_EQ(ownSize(Image::named("Missing").resizable().frame({.width = 22, .height = 20})), (Size{22, 20}));
}

TEST(ASymbol, HasTheForegroundColorAndTheGivenName) {
    EXPECT_EQ(scene(Image::system("trash").resizable().foregroundColor(Color::gray).accessibilityLabel("Bin")),
              Lines{"image 0,0 100x60 system gray \"trash\" named \"Bin\""});
}

TEST(ARing, TakesTheOfferedLengthOrNone) {
    const View ring = Circle{}.stroke(red);
    EXPECT_EQ(scene(ring), Lines{"stroke circle 0,0 100x60 255/0/0 1"});
    EXPECT_EQ(ownSize(across(ring)), Size{});
    EXPECT_EQ(ownSize(ring.padding(Edge::horizontal, 5).frame({.width = 30})), (Size{30, 0}));
    EXPECT_EQ(scene(Circle{}.stroke(Color::gray, 2.5).frame({.height = 30})),
              Lines{"stroke circle 0,15 100x30 gray 2.5"});
}

TEST(AFixedFrame, TakesTheOfferedLengthIfItsOwnIsInfinite) {
    EXPECT_EQ(scene(box(10, 4).frame({.width = infinity}).background(red)).front(),
              "fill rectangle 0,28 100x4 255/0/0");
    EXPECT_EQ(scene(box(10, 4).frame({.height = infinity}).background(red)).front(),
              "fill rectangle 45,0 10x60 255/0/0");
    EXPECT_EQ(ownSize(box(10, 4).frame({.width = infinity, .height = infinity})), (Size{10, 4}));
}

TEST(AFixedFrame, PlacesItsContentByItsAlignment) {
    const auto placed = [](const Alignment alignment) {
        return scene(box(10, 4).frame({.width = 30, .height = 20, .alignment = alignment})).front();
    };
    EXPECT_EQ(placed(Alignment::leading), "fill rectangle 35,28 10x4 white");
    EXPECT_EQ(placed(Alignment::center), "fill rectangle 45,28 10x4 white");
    EXPECT_EQ(placed(Alignment::trailing), "fill rectangle 55,28 10x4 white");
    EXPECT_EQ(scene(box(10, 4).frame({.width = 30})).front(), "fill rectangle 45,28 10x4 white");
}

TEST(AFixedFrame, OffersItsLengthsOrTheOfferedOnesToItsContent) {
    EXPECT_EQ(scene(area().frame({.width = 30, .height = 20})), Lines{"fill rectangle 35,20 30x20 white"});
    EXPECT_EQ(scene(area().frame({.width = 30})), Lines{"fill rectangle 35,0 30x60 white"});
}

TEST(AFrameOfTheGreatestLength, PinsItsContentToTheLeadingEdge) {
    const View text = line("a").frame({.width = greatestFiniteMagnitude, .alignment = Alignment::leading});
    EXPECT_EQ(scene(text.frame({.width = 50, .height = 16.25, .alignment = Alignment::leading}), {50, 16.25}),
              Lines{"text 0,0 5.85x16.25 body black \"a\""});
}

TEST(AFrameOfTheGreatestLength, NeverMakesALengthInfinite) {
    const View wide = box(1, 1).frame({.width = greatestFiniteMagnitude, .height = greatestFiniteMagnitude});
    const View ring = Circle{}.stroke(red).padding(-1e300).frame({.width = greatestFiniteMagnitude});
    const View stacks = down(across(wide, Spacer{}, wide), wide.padding().border(Color::black, 2), ring);
    const Size size = ownSize(stacks.frame({.maxWidth = infinity}).padding());
    EXPECT_TRUE(std::isfinite(size.width) && std::isfinite(size.height));
    for (const std::string& text : {fake::sceneOf(stacks), fake::sceneOf(stacks, Size{100, 60})}) {
        EXPECT_EQ(text.find("nan"), std::string::npos);
        EXPECT_EQ(text.find("inf"), std::string::npos);
    }
}

TEST(ANegativeLength, CountsAsZero) {
    EXPECT_EQ(ownSize(box(10, 4).frame({.width = -5})), (Size{0, 4}));
    EXPECT_EQ(ownSize(box(10, 4).frame({.maxHeight = -5})), (Size{10, 0}));
    EXPECT_EQ(ownSize(box(10, 4).padding(-5)), Size{});
    EXPECT_EQ(scene(area().frame({.maxWidth = -5})), Lines{"fill rectangle 50,0 0x60 white"});
}

TEST(AFlexibleFrame, TakesTheOfferedLengthUpToItsBound) {
    EXPECT_EQ(scene(area().frame({.maxHeight = 40})), Lines{"fill rectangle 0,10 100x40 white"});
    EXPECT_EQ(scene(area().frame({.maxWidth = 40})), Lines{"fill rectangle 30,0 40x60 white"});
    EXPECT_EQ(scene(area().frame({.maxHeight = 160})), Lines{"fill rectangle 0,0 100x60 white"});
    EXPECT_EQ(scene(box(10, 4).frame({.maxWidth = 40, .maxHeight = 30}).background(red)).front(),
              "fill rectangle 30,15 40x30 255/0/0");
}

TEST(AFlexibleFrame, IsNeverShorterThanItsContentUnlessTheBoundIs) {
    const auto heightOf = [](const double bound) {
        const auto frame = scene(box(10, 80).frame({.maxHeight = bound}).background(red), {10, 60}).front();
        return frame.substr(frame.find('x'));
    };
    EXPECT_EQ(heightOf(90), "x80 255/0/0");
    EXPECT_EQ(heightOf(70), "x70 255/0/0");
    EXPECT_EQ(heightOf(infinity), "x80 255/0/0");
}

TEST(AFlexibleFrame, HasTheLengthOfItsContentWithoutABoundOrAnOffer) {
    EXPECT_EQ(scene(box(10, 4).frame({.maxWidth = infinity}).background(red)).front(),
              "fill rectangle 0,28 100x4 255/0/0");
    EXPECT_EQ(scene(box(10, 4).frame({.maxHeight = infinity}).background(red)).front(),
              "fill rectangle 45,0 10x60 255/0/0");
    EXPECT_EQ(ownSize(box(10, 4).frame({.maxWidth = infinity, .maxHeight = 30})), (Size{10, 4}));
    EXPECT_EQ(ownSize(box(10, 40).frame({.maxWidth = infinity, .maxHeight = 30})), (Size{10, 30}));
}

TEST(AFlexibleFrame, PlacesItsContentByItsAlignment) {
    const FlexibleFrame frame{.maxWidth = infinity, .maxHeight = infinity, .alignment = Alignment::leading};
    EXPECT_EQ(scene(box(10, 4).frame(frame)), Lines{"fill rectangle 0,28 10x4 white"});
    EXPECT_EQ(scene(box(10, 4).frame({.maxWidth = infinity})), Lines{"fill rectangle 45,28 10x4 white"});
}

TEST(Padding, IsSixteenByDefault) {
    EXPECT_EQ(ownSize(box(10, 4).padding()), (Size{42, 36}));
    EXPECT_EQ(ownSize(box(10, 4).padding(Edge::horizontal)), (Size{42, 4}));
}

TEST(Padding, AddsToTheGivenEdges) {
    const auto padded = [](const Edge edges) { return scene(box(10, 4).padding(edges, 8).background(red)); };
    EXPECT_EQ(padded(Edge::all), (Lines{"fill rectangle 37,20 26x20 255/0/0", "fill rectangle 45,28 10x4 white"}));
    EXPECT_EQ(padded(Edge::horizontal),
              (Lines{"fill rectangle 37,28 26x4 255/0/0", "fill rectangle 45,28 10x4 white"}));
    EXPECT_EQ(padded(Edge::vertical), (Lines{"fill rectangle 45,20 10x20 255/0/0", "fill rectangle 45,28 10x4 white"}));
    EXPECT_EQ(padded(Edge::trailing), (Lines{"fill rectangle 41,28 18x4 255/0/0", "fill rectangle 41,28 10x4 white"}));
}

TEST(Padding, ReducesTheOfferToTheContent) {
    EXPECT_EQ(scene(area().padding(10)), Lines{"fill rectangle 10,10 80x40 white"});
    EXPECT_EQ(scene(area().padding(Edge::trailing, 10)), Lines{"fill rectangle 0,0 90x60 white"});
    EXPECT_EQ(scene(Image::named("Missing").resizable().padding(40)), Lines{"image 40,30 20x0 \"Missing\""});
}

TEST(ABackground, ExtendsUnderEachSafeAreaEdgeThatTheViewTouches) {
    const auto placed = [](const View& view) { return scene(view, {100, 60}, {28, 3, 5, 7}).front(); };
    EXPECT_EQ(placed(area()), "fill rectangle -3,-28 110x93 white");
    EXPECT_EQ(placed(area().padding(Edge::trailing, 1)), "fill rectangle -3,-28 102x93 white");
    EXPECT_EQ(placed(area().padding(Edge::vertical, 1)), "fill rectangle -3,1 110x58 white");
    EXPECT_EQ(placed(area().padding(Edge::horizontal, 1)), "fill rectangle 1,-28 98x93 white");
    EXPECT_EQ(placed(box(10, 4)), "fill rectangle 45,28 10x4 white");
}

TEST(ABackgroundOfAView, IsOfferedTheSizeOfTheViewAndCenteredBehindIt) {
    EXPECT_EQ(scene(box(40, 20).background(Circle{}.stroke(red, 3).padding(2))),
              (Lines{"stroke circle 32,22 36x16 255/0/0 3", "fill rectangle 30,20 40x20 white"}));
    EXPECT_EQ(scene(box(40, 20).background(box(10, 60, red))).front(), "fill rectangle 45,0 10x60 255/0/0");
}

TEST(ABorder, IsDrawnOverTheContentInsetByHalfItsWidth) {
    EXPECT_EQ(scene(box(20, 12).border(Color::gray, 3)),
              (Lines{"fill rectangle 40,24 20x12 white", "stroke rectangle 41.5,25.5 17x9 gray 3"}));
    EXPECT_EQ(scene(box(20, 12).border(red)).back(), "stroke rectangle 40.5,24.5 19x11 255/0/0 1");
}

TEST(ABorder, IsNoWiderThanItsViewAndNoNarrowerThanZero) {
    EXPECT_EQ(scene(box(10, 4).border(red, -30)).back(), "stroke rectangle 45,28 10x4 255/0/0 0");
    EXPECT_EQ(scene(box(10, 4).border(red, 30)).back(), "stroke rectangle 47,30 6x0 255/0/0 4");
    EXPECT_EQ(scene(box(4, 10).border(red, 30)).back(), "stroke rectangle 50,27 0x6 255/0/0 4");
}

TEST(AClip, CutsTheViewBeforeIt) {
    EXPECT_EQ(scene(box(20, 10).clipShape(Capsule{}).background(red)),
              (Lines{"fill rectangle 40,25 20x10 255/0/0", "clip capsule 40,25 20x10",
                     "  fill rectangle 40,25 20x10 white"}));
    EXPECT_EQ(scene(box(20, 10).clipShape(Circle{})).front(), "clip circle 40,25 20x10");
}

TEST(AMenu, HasAnIndicatorOfItsColorAndItsItems) {
    const Menu menu{"Title", {Button{Label{"Remove", "trash"}, [] {}}, Button{"Go", [] {}}}};
    EXPECT_EQ(scene(menu.foregroundColor(red)),
              (Lines{"menu 42,22 16x16 \"Title\"", "  item \"Remove\" system \"trash\"", "  item \"Go\" system \"\"",
                     "  indicator 42,22 16x16 255/0/0"}));
    EXPECT_EQ(scene(menu.accessibilityLabel("Actions")).front(), "menu 42,22 16x16 \"Actions\"");
    EXPECT_EQ(scene(Menu{"", {}}.frame({.width = 10})).front(), "menu 45,22 10x16 \"\"") << "as narrow as offered";
}

TEST(AButton, IsNamedByItsTitleUnlessItHasALabel) {
    EXPECT_EQ(scene(Button{"Go", [] {}}, {11.7, 16.25}),
              (Lines{"button 0,0 11.7x16.25 \"Go\"", "  text 0,0 11.7x16.25 body black \"Go\""}));
    EXPECT_EQ(scene(Button{"Go", [] {}}.accessibilityLabel("Go on"), {11.7, 16.25}),
              (Lines{"button 0,0 11.7x16.25 \"Go on\"", "  text 0,0 11.7x16.25 body black \"Go\""}));
}

struct WithSymbol {
    View makeBody(const ButtonStyleConfiguration& button) const {
        const View symbol = Image::system("star").resizable().frame({.width = 6, .height = 4});
        return across(symbol, button.label);
    }
};

TEST(AButton, HasTheInnermostStyleAndItsOwnName) {
    const View button = Button{"Go", [] {}}.buttonStyle(WithSymbol{}).accessibilityLabel("Go on");
    EXPECT_EQ(scene(button.buttonStyle([](const ButtonStyleConfiguration& other) { return other.label; })),
              (Lines{"button 37.15,21.875 25.7x16.25 \"Go on\"", "  image 37.15,28 6x4 system black \"star\"",
                     "  text 51.15,21.875 11.7x16.25 body black \"Go\""}));
}

std::string placesIn(const Scene& scene) {
    std::ostringstream text;
    for (const Control* control : controlsOf(scene)) {
        for (const std::uint32_t step : control->place.steps)
            text << step << ' ';
        text << "row " << control->place.rowLength << '\n';
    }
    return text.str();
}

TEST(APlace, IsThePathToAControlAndItsRow) {
    const View button = Button{"Go", [] {}};
    const auto row = [&](const std::size_t) { return Group{button, across(button)}; };
    const View screen = down(button, Group{ForEach{2, row}}.padding(), button);
    EXPECT_EQ(placesIn(layout(screen, std::nullopt, fake::FixedMetrics{})), "0 row 0\n"
                                                                            "1 0 0 0 0 0 row 5\n"
                                                                            "1 0 0 0 0 1 0 row 5\n"
                                                                            "1 0 0 0 1 0 row 5\n"
                                                                            "1 0 0 0 1 1 0 row 5\n"
                                                                            "2 row 0\n");
}

TEST(AControlBehindAnother, HasItsOwnPlaceAndIsReadFirst) {
    const View button = Button{"Go", [] {}};
    const View row = across(button, button);
    const Scene laidOut = layout(row.background(button).background(row), std::nullopt, fake::FixedMetrics{});
    std::vector<std::vector<std::uint32_t>> places;
    for (const Control* control : controlsOf(laidOut))
        places.push_back(control->place.steps);
    EXPECT_EQ(std::set(places.begin(), places.end()).size(), 5u);
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
}

TEST(AScene, PrefersTheColorSchemeOfItsView) {
    const fake::FixedMetrics metrics;
    EXPECT_EQ(layout(area(), std::nullopt, metrics).preferredColorScheme, std::nullopt);
    const View light = box(10, 4).preferredColorScheme(ColorScheme::light).padding();
    EXPECT_EQ(layout(light, std::nullopt, metrics).preferredColorScheme, ColorScheme::light);
    EXPECT_EQ(scene(light), scene(box(10, 4).padding()));
}

TEST(TheCostOfALayout, GrowsWithTheNumberOfNodesNotWithTheirDepth) {
    const auto measurements = [](const int depth) {
        View view = line(ten);
        for (int level = 0; level < depth; ++level)
            view = down(across(view, Spacer{}), Spacer{});
        const fake::FixedMetrics metrics;
        layout(view, Size{400, 400}, metrics);
        return metrics.textMeasurements;
    };
    EXPECT_LE(measurements(40), measurements(4) + 40 * 8);
}

} // namespace
} // namespace platform::ui
