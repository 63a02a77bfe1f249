#include "tests/macos/gnustep/Desk.h"

#include "app/DriverManagerApp.h"
#include "platform/macos/CallbackGuard.h"
#include "platform/macos/NativeText.h"
#include "tests/macos/gnustep/ScriptedExtensions.h"
#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <map>
#include <stdexcept>
#include <utility>

namespace {

using Body = std::function<void()>;

/// A failure bound, not a wait: everything here comes of an event.
constexpr NSTimeInterval longTime = 30;

std::deque<macos_tests::Step>& steps() {
    static std::deque<macos_tests::Step> waiting;
    return waiting;
}

/// Whether the application waits for what comes next while a button is held down or a menu is open.
bool& isTracking() {
    static bool tracking = false;
    return tracking;
}

/// When it is too late for what is awaited.
NSTimeInterval& patienceEnds() {
    static NSTimeInterval end = 0;
    return end;
}

void bePatient() {
    patienceEnds() = [NSDate timeIntervalSinceReferenceDate] + longTime;
}

std::string awaited() {
    if (!isTracking()) return "something to do, or the end of the application,";
    return steps().empty() ? "the end of the press or of the menu" : steps().front().awaited;
}

[[noreturn]] void giveUp() {
    ADD_FAILURE() << awaited() << " does not come";
    std::fflush(nullptr);
    std::_Exit(EXIT_FAILURE);
}

void takeSteps() {
    while (isTracking() && !steps().empty() && steps().front().holds()) {
        const auto act = steps().front().act;
        steps().pop_front();
        bePatient();
        act();
    }
}

/// Ends the wait for an event, so that whoever waits looks again.
void wake() {
    takeSteps();
    [NSApp postEvent:[NSEvent otherEventWithType:NSApplicationDefined
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:0
                                         context:nil
                                         subtype:0
                                           data1:0
                                           data2:0]
             atStart:NO];
}

NSWindow* window() {
    for (NSWindow* candidate in [NSApp windows])
        if ([[candidate contentView] isKindOfClass:NSClassFromString(@"KelvraSceneView")]) return candidate;
    return nil;
}

/// The display's name for the window.
unsigned long nativeOf(NSWindow* const window) {
    return reinterpret_cast<unsigned long>([window windowRef]);
}

/// Waits until the display has done what the application asked of it.
void finishDrawing() {
    macos_tests::Display::finish([GSCurrentServer() performSelector:@selector(serverDevice)]);
}

NSView* sceneView() {
    return [window() contentView];
}

NSMenu* openMenu() {
    return static_cast<NSMenu*>(standin::openMenu());
}

/// What is told of a cell is told of its control, which the cell does not know before it has drawn.
id toldOf(const id element) {
    if (![element isKindOfClass:[NSCell class]]) return element;
    for (NSControl* control in [sceneView() subviews])
        if ([control cell] == element) return control;
    return nil;
}

NSControl* controlOf(const std::string& label) {
    for (id element in [sceneView() accessibilityChildren]) {
        const bool isControl = [element isKindOfClass:[NSCell class]];
        if (isControl && platform::textOf([toldOf(element) accessibilityLabel]) == label) return toldOf(element);
    }
    throw std::out_of_range{"no control is called " + label};
}

macos_tests::Picture pictureOf(NSBitmapImageRep* const bitmap) {
    const auto channel = [](const CGFloat component) {
        return static_cast<std::uint8_t>(std::lround(component * 255));
    };
    macos_tests::Picture picture{static_cast<int>([bitmap pixelsWide]), static_cast<int>([bitmap pixelsHigh]), {}};
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            NSColor* const color = [bitmap colorAtX:x y:y];
            picture.pixels.push_back(
                {channel([color redComponent]), channel([color greenComponent]), channel([color blueComponent])});
        }
    return picture;
}

platform::ui::Rect rectOf(const NSRect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

/// In the scene's points: an accessible object tells its place on the screen.
platform::ui::Rect placeOf(const id element) {
    if ([element isKindOfClass:[NSView class]]) return rectOf([static_cast<NSView*>(element) frame]);
    const NSRect inWindow = [window() convertRectFromScreen:[element accessibilityFrame]];
    return rectOf([sceneView() convertRect:inWindow fromView:nil]);
}

macos_tests::Element elementOf(const id told) {
    const id element = toldOf(told);
    return {platform::textOf([element accessibilityRole]), platform::textOf([element accessibilityLabel]),
            platform::textOf([element accessibilityValue]), placeOf(element)};
}

} // namespace

/// Runs the body of a test after the handling of an event, and its steps before each wait while something is tracked.
@interface TestApplication : NSApplication {
@public
    Body body_;
    bool hasLaunched_;
    bool hasTracked_;
    std::map<NSUInteger, int> handled_; // how many events of a type, but for those that something tracked
}
@end

@implementation TestApplication

// The system launches an application once, and here one follows the other. What GNUstep lets go of later may draw in a
// window: it goes first.
- (void)run {
    @autoreleasepool {
        if (std::exchange(hasLaunched_, true))
            [[NSNotificationCenter defaultCenter] postNotificationName:NSApplicationDidFinishLaunchingNotification
                                                                object:self];
        [super run];
    }
}

// What GNUstep shows a menu in outlives it and refers to it.
- (void)setMainMenu:(NSMenu*)menu {
    [menu retain];
    [super setMainMenu:menu];
}

// The body begins with the first event, whichever it is: while it comes to the front an application may drop one.
- (void)sendEvent:(NSEvent*)event {
    [super sendEvent:event];
    ++handled_[[event type]];
    if (const auto body = std::exchange(body_, nullptr)) body();
}

- (NSEvent*)nextEventMatchingMask:(NSUInteger)mask untilDate:(NSDate*)end inMode:(NSString*)mode dequeue:(BOOL)dequeue {
    const bool tracks = [mode isEqual:NSEventTrackingRunLoopMode];
    // What is tracked gets events at intervals, which tell nothing.
    if (!std::exchange(hasTracked_, tracks) || !tracks) bePatient();
    isTracking() = tracks;
    takeSteps();
    NSEvent* event = nil;
    do {
        if ([NSDate timeIntervalSinceReferenceDate] >= patienceEnds()) giveUp();
        NSDate* const limit = [NSDate dateWithTimeIntervalSinceReferenceDate:patienceEnds()];
        event = [super nextEventMatchingMask:mask untilDate:[limit earlierDate:end] inMode:mode dequeue:dequeue];
    } while (!event && [end timeIntervalSinceNow] > 0);
    isTracking() = false;
    return event;
}

- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart {
    [super postEvent:event atStart:atStart];
    standin::endWait();
}

@end

namespace macos_tests {

namespace {

/// Done once, before there is an application.
bool isPrepared() {
    standin::failOnComplaints();
    standin::keepToOneself();
    [TestApplication sharedApplication];
    standin::announceMenus();
    standin::attendToDisplay();
    return true;
}

/// Makes an application, and a system that knows of no other before it.
void prepareDesk() {
    @autoreleasepool {
        static const bool prepared = isPrepared();
        static_cast<void>(prepared);
        standin::ScriptedExtensions::shared().forget();
        standin::loggedLines().clear();
        standin::announcements().clear();
    }
}

/// Runs the application, and the body inside its main loop.
int runWith(Body body, const Desk::Application& application) {
    prepareDesk();
    standin::whenWorkIsDone(wake);
    static_cast<TestApplication*>(NSApp)->body_ = std::move(body);
    @autoreleasepool {
        wake();
    }
    const int status = application();
    standin::whenWorkIsDone(nullptr);
    steps().clear();
    return status;
}

} // namespace

void Desk::runInFront(const std::function<void(Desk&)>& body) {
    Desk desk;
    if (!desk.until([&] { return desk.isReady(); }))
        ADD_FAILURE() << "the window did not come to the front";
    else if (!platform::guarded([&] { body(desk); }))
        ADD_FAILURE() << standin::loggedLines().back();
}

int Desk::runToItsEnd(const std::function<void(Desk&)>& body, const Application& application) {
    return runWith([&] { runInFront(body); }, application);
}

int Desk::run(const std::function<void(Desk&)>& body, const Application& application) {
    const auto bodyAndEnd = [&] {
        runInFront(body);
        [NSApp stop:nil];
        wake();
    };
    return runWith(bodyAndEnd, application);
}

int Desk::driverManager() {
    return app::DriverManagerApp{}.main(0, nullptr);
}

bool Desk::until(const std::function<bool()>& holds) {
    NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:longTime];
    while (!holds()) {
        @autoreleasepool {
            NSEvent* const event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                      untilDate:end
                                                         inMode:NSDefaultRunLoopMode
                                                        dequeue:YES];
            if (!event) return false;
            [NSApp sendEvent:event];
            [NSApp updateWindows];
        }
    }
    return true;
}

void Desk::meanwhile(std::vector<Step> followed) {
    steps().assign(followed.begin(), followed.end());
}

bool Desk::meanwhileIsOver() const {
    return steps().empty();
}

Step atOnce(std::function<void()> act) {
    return {"a press or a menu", [] { return true; }, std::move(act)};
}

Step Desk::onceMenuIsOpen(std::function<void()> act) const {
    return {"an open menu", [this] { return !menuItems().empty(); }, std::move(act)};
}

Step Desk::onceAtItem(const std::string& title, std::function<void()> act) {
    return {"the pointer at " + title, [this, title] { return isAtItem(title); }, std::move(act)};
}

std::vector<Element> Desk::elements() const {
    std::vector<Element> elements;
    for (id child in [sceneView() accessibilityChildren])
        elements.push_back(elementOf(child));
    return elements;
}

std::optional<Element> Desk::elementAt(const platform::ui::Point point) const {
    const NSRect inWindow = [sceneView() convertRect:NSMakeRect(point.x, point.y, 0, 0) toView:nil];
    const id hit = [sceneView() accessibilityHitTest:[window() convertRectToScreen:inWindow].origin];
    return hit == window() ? std::nullopt : std::optional{elementOf(hit)};
}

bool Desk::areInTheWindow() const {
    for (id child in [sceneView() accessibilityChildren])
        if (child == toldOf(child) && [child accessibilityParent] != window()) return false;
    return true;
}

std::vector<std::string> Desk::texts() const {
    std::vector<std::string> texts;
    for (const Element& element : elements())
        if (!element.value.empty()) texts.push_back(element.value);
    return texts;
}

bool Desk::shows(const std::string& text) const {
    const auto shown = texts();
    return std::find(shown.begin(), shown.end(), text) != shown.end();
}

bool Desk::has(const std::string& label) const {
    const auto present = elements();
    return std::any_of(present.begin(), present.end(), [&](const Element& element) { return element.label == label; });
}

std::string Desk::focused() const {
    NSResponder* const focused = [window() firstResponder];
    return [focused isKindOfClass:[NSControl class]] ? platform::textOf([focused accessibilityLabel]) : "";
}

bool Desk::acceptsFocus(const std::string& label) const {
    return [controlOf(label) acceptsFirstResponder];
}

bool Desk::keepsItsOrderOfKeys() const {
    return ![window() autorecalculatesKeyViewLoop];
}

platform::ui::Rect Desk::focusRingOf(const std::string& label) const {
    return rectOf([controlOf(label) focusRingMaskBounds]);
}

Picture Desk::focusRingMaskOf(const std::string& label) const {
    NSControl* const control = controlOf(label);
    const NSRect whole = {NSZeroPoint, [sceneView() frame].size};
    NSAffineTransform* const toScene = [NSAffineTransform transform];
    [toScene translateXBy:NSMinX([control frame]) yBy:NSMaxY([sceneView() bounds]) - NSMinY([control frame])];
    [toScene scaleXBy:1 yBy:-1];
    NSImage* const image = [[[NSImage alloc] initWithSize:whole.size] autorelease];
    [image lockFocus];
    [[NSColor whiteColor] set];
    NSRectFill(whole);
    [NSGraphicsContext saveGraphicsState];
    [toScene concat];
    [control drawFocusRingMask];
    [NSGraphicsContext restoreGraphicsState];
    NSBitmapImageRep* const seen = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:whole] autorelease];
    [image unlockFocus];
    return pictureOf(seen);
}

bool Desk::isAtItem(const std::string& title) {
    if (menuItems().empty() || highlightedItem() == title) return !menuItems().empty();
    pointAt(middleOfItem(title));
    return false;
}

platform::ui::Point Desk::middleOfItem(const std::string& title) const {
    NSMenu* const menu = openMenu();
    NSMenuView* const view = [menu menuRepresentation];
    const NSRect item = [view rectOfItemAtIndex:[menu indexOfItemWithTitle:platform::toNSString(title)]];
    const NSPoint middle = [view convertPoint:NSMakePoint(NSMidX(item), NSMidY(item)) toView:nil];
    // For a while GNUstep believes the menu elsewhere than it has put it.
    finishDrawing();
    const auto corner = display_.positionOf(nativeOf([view window]));
    const double below = [[view window] frame].size.height - middle.y;
    const auto scene = originOfScene();
    return {corner.x + middle.x - scene.x, corner.y + below - scene.y};
}

std::string Desk::title() const {
    return platform::textOf([window() title]);
}

platform::ui::Size Desk::contentSize() const {
    const NSSize size = [sceneView() frame].size;
    return {size.width, size.height};
}

bool Desk::isReady() {
    if (![window() isVisible] || !display_.shows(nativeOf(window()))) return false;
    // The application knows of keys that it gets before it gets them.
    const bool getsKeys = [window() isKeyWindow] && display_.isFocused(nativeOf(window()));
    if (!getsKeys) display_.activate(nativeOf(window()));
    return getsKeys && picture().at(1, 1) != Rgb{};
}

platform::ui::Point Desk::middleOf(const std::string& label) const {
    const NSRect frame = [controlOf(label) frame];
    return {NSMidX(frame), NSMidY(frame)};
}

void Desk::pointAt(const platform::ui::Point point) {
    const auto origin = originOfScene();
    display_.movePointer(origin.x + static_cast<int>(point.x), origin.y + static_cast<int>(point.y));
}

void Desk::press(const std::string& label, std::vector<Step> during) {
    pointAt(middleOf(label));
    meanwhile(std::move(during));
    display_.pressButton();
}

void Desk::click(const std::string& label) {
    press(label, {atOnce([this] { releaseButton(); })});
}

bool Desk::pressBeside(const platform::ui::Point point) {
    pointAt(point);
    display_.pressButton();
    return isHandled(NSLeftMouseDown);
}

bool Desk::clickBeside(const platform::ui::Point point) {
    pointAt(point);
    display_.pressButton();
    display_.releaseButton();
    return isHandled(NSLeftMouseUp);
}

bool Desk::isHandled(const unsigned long type) {
    int& handled = static_cast<TestApplication*>(NSApp)->handled_[type];
    const int before = handled;
    return until([&] { return handled != before; });
}

void Desk::choose(const std::string& label, const std::string& item) {
    press(label, {onceAtItem(item, [this] { releaseButton(); })});
}

void Desk::tapKey(const std::string& key, const std::vector<std::string>& modifiers) {
    display_.tapKey(key, modifiers);
}

void Desk::closeWindow() {
    display_.closeWindow(nativeOf(window()));
}

Picture Desk::picture(const int above) {
    [window() displayIfNeeded];
    [window() flushWindow];
    finishDrawing();
    const NSSize size = [sceneView() frame].size;
    const int top = static_cast<int>(-[sceneView() bounds].origin.y) - above;
    return display_.picture(nativeOf(window()), 0, top, static_cast<int>(size.width),
                            static_cast<int>(size.height) - top);
}

Display::Position Desk::originOfScene() const {
    const auto corner = display_.positionOf(nativeOf(window()));
    const NSRect bounds = [sceneView() bounds];
    return {corner.x - static_cast<int>(bounds.origin.x), corner.y - static_cast<int>(bounds.origin.y)};
}

} // namespace macos_tests
