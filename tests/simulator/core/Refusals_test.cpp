// What the machine does not do, and what it says then: malformed words, limits, and what is not there to be done.

#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// "KIND: MESSAGE" of a refusal; "done" if there is none.
std::string textOf(const Verdict& verdict) {
    using Kind = Refusal::Kind;
    static const std::map<Kind, std::string> kinds{{Kind::nothingWaiting, "nothing waiting"},
                                                   {Kind::unknownIdentifier, "unknown identifier"},
                                                   {Kind::invalidArgument, "invalid argument"},
                                                   {Kind::limitExceeded, "limit exceeded"},
                                                   {Kind::forbiddenByProfile, "forbidden by profile"}};
    return verdict ? kinds.at(verdict->kind) + ": " + verdict->message : "done";
}

class AMachineThatRefuses : public testing::Test {
protected:
    Machine& machine() { return mac.machine(); }

    SampleMac mac;
};

TEST_F(AMachineThatRefuses, RejectsAMalformedSubmission) {
    const auto submit = [&](const std::string& token, const std::string& identifier) {
        return textOf(machine().submit({"client", token, sampleApplication, RequestKind::activation, identifier}));
    };
    const std::string badToken = "invalid argument: the token is malformed";
    const std::string badIdentifier = "invalid argument: the identifier is malformed";
    EXPECT_EQ(submit("", camera), badToken);
    EXPECT_EQ(submit("a\nb", camera), badToken);
    EXPECT_EQ(submit("a\x7f", camera), badToken);
    EXPECT_EQ(submit(std::string(129, 'a'), camera), badToken);
    EXPECT_EQ(submit("a", std::string(256, 'a')), badIdentifier);
    EXPECT_EQ(submit("a", "a\tb"), badIdentifier);
    EXPECT_THAT(machine().requests(), IsEmpty());
    EXPECT_EQ(submit(std::string(128, 'a'), std::string(255, 'a')), "done");
    EXPECT_EQ(submit(" ", ""), "done");
}

TEST_F(AMachineThatRefuses, RejectsATokenOfAnOpenRequestOfTheSameClient) {
    mac.activate("a");
    EXPECT_EQ(textOf(machine().submit({"client", "a", "", RequestKind::properties, camera})),
              "invalid argument: the token is in use by an open request");
    mac.submit({"other", "a", "", RequestKind::properties, camera});
    mac.mustDo(machine().allow(camera));
    mac.submit("a", RequestKind::properties);
}

TEST_F(AMachineThatRefuses, StillServesOthersWhenOneClientFloodsIt) {
    for (int i = 0; i < 256; ++i)
        mac.submit({"flood", std::to_string(i), "", RequestKind::properties, camera});
    EXPECT_EQ(textOf(machine().submit({"flood", "more", "", RequestKind::properties, camera})),
              "limit exceeded: too many requests are open");
    mac.properties("a");
    EXPECT_EQ(mac.heard().back(), "a: found none");
}

TEST_F(AMachineThatRefuses, LimitsTheNumberOfRequests) {
    for (int i = 0; i < 4096; ++i)
        mac.submit({"client" + std::to_string(i / 256), std::to_string(i), "", RequestKind::properties, camera});
    EXPECT_EQ(textOf(machine().submit({"another", "a", "", RequestKind::properties, camera})),
              "limit exceeded: too many requests are open");
}

TEST_F(AMachineThatRefuses, LimitsTheNumberOfApplicationsThatItRemembers) {
    for (int i = 0; i < 1001; ++i) {
        const std::string number = std::to_string(i);
        mac.submit({"client" + number, number, "/Applications/" + number + ".app", RequestKind::properties, camera});
    }
    EXPECT_THAT(machine().state().applications, SizeIs(1000));
}

TEST_F(AMachineThatRefuses, LimitsTheNumberOfFaults) {
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(machine().orderFault({}), done);
    EXPECT_EQ(textOf(machine().orderFault({})), "limit exceeded: too many faults are ordered");
}

TEST_F(AMachineThatRefuses, LimitsTheNumberOfCopies) {
    for (int i = 0; i < 20000; ++i)
        ASSERT_EQ(machine().install(camera, {"1", "1"}, "uninstalling"), done);
    EXPECT_EQ(textOf(machine().install(camera, {"1", "1"}, "uninstalling")),
              "limit exceeded: too many copies are installed");
}

TEST_F(AMachineThatRefuses, AcceptsAnAnswerOnlyFromTheClientThatItAskedAndOnlyOnce) {
    const std::string none = "invalid argument: no such question is open";
    EXPECT_EQ(textOf(machine().answerReplacement("client", "a", true)), none);
    mac.install("2004", "enabled");
    mac.activate("a");
    EXPECT_EQ(textOf(machine().answerReplacement("other", "a", true)), none);
    EXPECT_EQ(textOf(machine().answerReplacement("client", "b", true)), none);
    EXPECT_EQ(textOf(machine().answerReplacement("client", "a", true)), "done");
    EXPECT_EQ(textOf(machine().answerReplacement("client", "a", true)), none);
}

TEST_F(AMachineThatRefuses, RejectsAFaultThatCannotHappen) {
    const auto order = [&](Fault::Kind kind, std::optional<RequestKind> request, std::int64_t milliseconds) {
        return textOf(machine().orderFault({kind, request, {}, milliseconds}));
    };
    const std::string none = "invalid argument: this fault cannot befall that kind of request";
    EXPECT_EQ(order(Fault::Kind::noprompt, RequestKind::properties, 0), none);
    EXPECT_EQ(order(Fault::Kind::noprompt, RequestKind::deactivation, 0), none);
    EXPECT_EQ(order(Fault::Kind::hollow, RequestKind::properties, 0), none);
    EXPECT_EQ(order(Fault::Kind::hollow, RequestKind::deactivation, 0), "done");
    EXPECT_EQ(order(Fault::Kind::delay, {}, -1), "invalid argument: a delay cannot be negative");
    EXPECT_EQ(order(Fault::Kind::delay, {}, 31622400000001), "invalid argument: the delay is too long");
    EXPECT_EQ(order(Fault::Kind::delay, {}, 31622400000000), "done");
}

TEST_F(AMachineThatRefuses, RejectsAMalformedError) {
    const auto order = [&](const std::string& domain, const std::string& description) {
        Fault fault;
        fault.failure = {domain, 1, description};
        return textOf(machine().orderFault(fault));
    };
    const std::string malformed = "invalid argument: the error is malformed";
    EXPECT_EQ(order("a\n", ""), malformed);
    EXPECT_EQ(order(std::string(256, 'a'), ""), malformed);
    EXPECT_EQ(order("", std::string(65537, 'a')), malformed);
    EXPECT_EQ(order(std::string(255, 'a'), std::string(65536, '\n')), "done");
}

TEST_F(AMachineThatRefuses, MovesTheClockOnlyForwardAndUpToALimit) {
    mac.mustDo(machine().advance(5));
    EXPECT_EQ(textOf(machine().advance(-1)), "invalid argument: time cannot go back");
    EXPECT_EQ(textOf(machine().advance(31622399999996)), "invalid argument: that is too far in the future");
    EXPECT_EQ(textOf(machine().advance(31622399999995)), "done");
    EXPECT_EQ(machine().state().clock, 31622400000000);
}

TEST_F(AMachineThatRefuses, AcceptsOnlyAbsoluteApplicationsFolders) {
    const auto set = [&](const std::vector<std::string>& folders) {
        return textOf(machine().setApplicationsFolders(folders));
    };
    EXPECT_EQ(set({"/a", "relative"}), "invalid argument: \"relative\" is not an absolute path");
    EXPECT_EQ(set({""}), "invalid argument: \"\" is not an absolute path");
    EXPECT_EQ(set({"/a\n"}), "invalid argument: \"/a\n\" is not an absolute path");
    EXPECT_EQ(set({"/" + std::string(4096, 'a')}).substr(0, 17), "invalid argument:");
    EXPECT_EQ(set(std::vector<std::string>(65, "/a")), "limit exceeded: too many Applications folders");
    EXPECT_EQ(machine().state().settings, Settings{});
    EXPECT_EQ(set(std::vector<std::string>(64, "/" + std::string(4095, 'a'))), "done");
}

TEST_F(AMachineThatRefuses, RejectsAProfileThatIsTooLongOrMalformed) {
    EXPECT_EQ(textOf(machine().setProfile(std::string(1048577, 'x'))), "invalid argument: the profile is too long");
    mac.forbid();
    EXPECT_EQ(textOf(machine().setProfile(std::string(1048576, 'x'))), "invalid argument: the profile is malformed");
    EXPECT_FALSE(machine().state().settings.profile.allowsUserOverrides);
}

TEST_F(AMachineThatRefuses, RejectsAVersionThatIsEmptyTooLongOrMalformed) {
    const auto install = [&](const std::string& shortVersion, const std::string& version) {
        return textOf(machine().install(camera, {shortVersion, version}, "enabled"));
    };
    const std::string malformed = "invalid argument: the version is empty or malformed";
    EXPECT_EQ(install("1\n", "1"), malformed);
    EXPECT_EQ(install("1", "1\n"), malformed);
    EXPECT_EQ(install("1", std::string(4097, '1')), malformed);
    EXPECT_EQ(install("", "1"), malformed);
    EXPECT_EQ(install("1", ""), malformed);
    EXPECT_EQ(install(std::string(4096, '1'), "1"), "done");
    EXPECT_EQ(textOf(machine().install(camera, {"1", "1"}, "preparing")),
              "invalid argument: unknown state \"preparing\"");
}

/// Each verb about an extension, where there is nothing that it could do.
TEST_F(AMachineThatRefuses, SaysWhyAVerbDoesNotApplyToAnExtension) {
    using Verb = Verdict (Machine::*)(const std::string&);
    const std::vector<std::pair<Verb, std::string>> verbs{
        {&Machine::allow, "no copy is waiting for approval"},
        {&Machine::deny, "no copy is waiting for approval"},
        {&Machine::authorize, "no removal is waiting for an administrator"},
        {&Machine::refuse, "no removal is waiting for an administrator"},
        {&Machine::disable, "not enabled"},
        {&Machine::enable, "not disabled"}};
    for (const auto& [verb, reason] : verbs) {
        const auto said = [&, act = verb](const std::string& identifier) {
            return textOf((machine().*act)(identifier));
        };
        EXPECT_EQ(said(camera), "nothing waiting: com.kelvra.ip-camera.cmio: " + reason);
        EXPECT_EQ(said("com.example.unknown"), "unknown identifier: com.example.unknown: no such extension");
        EXPECT_EQ(said(""), "invalid argument: the identifier is malformed");
        EXPECT_EQ(said(std::string(256, 'a')), "invalid argument: the identifier is malformed");
    }
}

TEST_F(AMachineThatRefuses, UninstallsDisablesAndEnablesOnlyIfThatChangesSomething) {
    EXPECT_EQ(textOf(machine().uninstall("-", camera)), "nothing waiting: com.kelvra.ip-camera.cmio: not installed");
    mac.install("1", "disabled");
    EXPECT_EQ(textOf(machine().disable(camera)), "nothing waiting: com.kelvra.ip-camera.cmio: not enabled");
    mac.mustDo(machine().enable(camera));
    EXPECT_EQ(textOf(machine().enable(camera)), "nothing waiting: com.kelvra.ip-camera.cmio: not disabled");
}

TEST_F(AMachineThatRefuses, EnablesNothingThatTheProfileForbids) {
    mac.install("1", "waiting");
    mac.install("1", "disabled", driver);
    mac.forbid();
    const std::string ofCamera = "forbidden by profile: com.kelvra.ip-camera.cmio: the management profile forbids it";
    EXPECT_EQ(textOf(machine().allow(camera)), ofCamera);
    EXPECT_EQ(textOf(machine().install(camera, {"1", "2"}, "enabled")), ofCamera);
    EXPECT_EQ(textOf(machine().enable(driver)),
              "forbidden by profile: com.kelvra.driverkit.usb-to-poe: the management profile forbids it");
    EXPECT_THAT(machine().state().approvals, SizeIs(1));
}

} // namespace
} // namespace simulator
