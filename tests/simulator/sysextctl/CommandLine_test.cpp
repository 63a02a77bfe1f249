#include "simulator/sysextctl/CommandFailure.h"
#include "simulator/sysextctl/CommandLine.h"
#include "tests/simulator/support/Printing.h"

namespace simulator::ctl {

namespace {

/// The one line that a command line gets which is not understood, and what the program ends with.
struct Refused {
    int code = 0;
    std::string line;
};

template <typename Expected>
Expected read(const QString& line) {
    return std::get<Expected>(readCommandLine(line.split(u' ', Qt::SkipEmptyParts)));
}

Refused refused(const QStringList& words) {
    try {
        readCommandLine(words);
    } catch (const CommandFailure& failure) {
        return {failure.code(), failure.what()};
    }
    return {};
}

std::string refusedLine(const QString& line) {
    const auto [code, text] = refused(line.split(u' ', Qt::SkipEmptyParts));
    EXPECT_EQ(code, exitCode::notUnderstood);
    return text;
}

} // namespace

TEST(TheCommandLine, ListsEveryCategoryAsTextUnlessToldOtherwise) {
    const auto list = read<ListCopies>("list");
    EXPECT_EQ(list.category, "");
    EXPECT_EQ(list.form, Form::text);
}

TEST(TheCommandLine, TakesACategoryByItsFullOrItsShortName) {
    EXPECT_EQ(read<ListCopies>("list cmio").category, "com.apple.system_extension.cmio");
    EXPECT_EQ(read<ListCopies>("list com.apple.system_extension.driver_extension").category,
              "com.apple.system_extension.driver_extension");
}

TEST(TheCommandLine, ListsAsJsonWhereverTheOptionStands) {
    EXPECT_EQ(read<ListCopies>("list --json cmio").form, Form::json);
    EXPECT_EQ(read<ListCopies>("list cmio --json").form, Form::json);
    EXPECT_EQ(read<ListRequests>("requests --json").form, Form::json);
}

TEST(TheCommandLine, NamesTheExtensionThatAPersonActsOn) {
    const auto allow = read<ActOn>("allow com.kelvra.ip-camera.cmio");
    EXPECT_EQ(allow.deed, Deed::allow);
    EXPECT_EQ(allow.identifier, "com.kelvra.ip-camera.cmio");
    EXPECT_EQ(read<ActOn>("deny x").deed, Deed::deny);
    EXPECT_EQ(read<ActOn>("authorize x").deed, Deed::authorize);
    EXPECT_EQ(read<ActOn>("refuse x").deed, Deed::refuse);
    EXPECT_EQ(read<ActOn>("disable x").deed, Deed::disable);
    EXPECT_EQ(read<ActOn>("enable x").deed, Deed::enable);
}

TEST(TheCommandLine, InstallsAnEnabledCopyUnlessAStateIsGiven) {
    const auto install = read<Install>("install com.kelvra.ip-camera.cmio 2.0 2004");
    EXPECT_EQ(install.identifier, "com.kelvra.ip-camera.cmio");
    EXPECT_EQ(install.shortVersion, "2.0");
    EXPECT_EQ(install.version, "2004");
    EXPECT_EQ(install.condition, "enabled");
    EXPECT_EQ(read<Install>("install x 2.0 2004 uninstalling").condition, "uninstalling");
}

TEST(TheCommandLine, WaitsHalfAMinuteUnlessATimeoutIsGiven) {
    const auto wait = read<WaitFor>("wait x absent");
    EXPECT_EQ(wait.identifier, "x");
    EXPECT_EQ(wait.condition, "absent");
    EXPECT_EQ(wait.timeout, 30'000);
}

TEST(TheCommandLine, TakesATimeoutInSecondsWhereverItStands) {
    EXPECT_EQ(read<WaitFor>("wait x enabled --timeout 5").timeout, 5'000);
    EXPECT_EQ(read<WaitFor>("wait --timeout 0.25 x enabled").timeout, 250);
    EXPECT_EQ(read<WaitFor>("wait x enabled --timeout 2m").timeout, 120'000);
    EXPECT_EQ(read<WaitFor>("wait x enabled --timeout=2m").timeout, 120'000);
}

TEST(TheCommandLine, ShowsOrSetsTheApplicationsFolders) {
    EXPECT_EQ(read<Applications>("applications").folders, QStringList{});
    EXPECT_EQ(read<Applications>("applications /here there").folders, (QStringList{"/here", "there"}));
}

TEST(TheCommandLine, ShowsOrSetsDeveloperMode) {
    EXPECT_EQ(read<DeveloperMode>("developer").on, std::nullopt);
    EXPECT_EQ(read<DeveloperMode>("developer on").on, true);
    EXPECT_EQ(read<DeveloperMode>("developer off").on, false);
}

TEST(TheCommandLine, ShowsSetsOrRemovesAProfile) {
    EXPECT_EQ(read<Profile>("profile").purpose, Profile::Purpose::show);
    EXPECT_EQ(read<Profile>("profile --remove").purpose, Profile::Purpose::remove);
    const auto set = read<Profile>("profile managed.plist");
    EXPECT_EQ(set.purpose, Profile::Purpose::set);
    EXPECT_EQ(set.file, "managed.plist");
}

TEST(TheCommandLine, AdvancesTheClockByAnyUnit) {
    EXPECT_EQ(read<Advance>("advance 90s").milliseconds, 90'000);
    EXPECT_EQ(read<Advance>("advance 1h").milliseconds, 3'600'000);
}

TEST(TheCommandLine, OrdersAnErrorWithOrWithoutADescription) {
    const auto plain = read<OrderFault>("fault next activate 8");
    EXPECT_EQ(plain.kind, "activation");
    EXPECT_EQ(plain.fault, "error");
    EXPECT_EQ(plain.code, 8);
    EXPECT_EQ(plain.description, "");
    const auto told = std::get<OrderFault>(
        readCommandLine({"fault", "next", "any", "28", "no space left", "--domain", "NSPOSIXErrorDomain"}));
    EXPECT_EQ(told.kind, "any");
    EXPECT_EQ(told.code, 28);
    EXPECT_EQ(told.description, "no space left");
    EXPECT_EQ(told.domain, "NSPOSIXErrorDomain");
}

TEST(TheCommandLine, OrdersADelayInMilliseconds) {
    const auto delay = read<OrderFault>("fault next deactivate after 90s");
    EXPECT_EQ(delay.kind, "deactivation");
    EXPECT_EQ(delay.fault, "delay");
    EXPECT_EQ(delay.milliseconds, 90'000);
}

TEST(TheCommandLine, OrdersTheFaultsThatTakeNothing) {
    EXPECT_EQ(read<OrderFault>("fault next properties silent").fault, "silent");
    EXPECT_EQ(read<OrderFault>("fault next activate hollow").fault, "hollow");
    EXPECT_EQ(read<OrderFault>("fault next activate noprompt").fault, "noprompt");
    EXPECT_EQ(read<OrderFault>("fault next any crash").fault, "crash");
}

TEST(TheCommandLine, GivesHelpForTheProgramAndForAVerb) {
    EXPECT_EQ(read<ShowHelp>("--help").verb, "");
    EXPECT_EQ(read<ShowHelp>("help").verb, "");
    EXPECT_EQ(read<ShowHelp>("help wait").verb, "wait");
    EXPECT_EQ(read<ShowHelp>("install --help").verb, "install");
    EXPECT_EQ(read<ShowHelp>("fault next any --help").verb, "fault");
    EXPECT_EQ(read<ShowHelp>("fault -h").verb, "fault");
}

TEST(TheCommandLine, SaysWhatItDoesNotKnow) {
    EXPECT_EQ(refusedLine(""), "a verb is missing; \"sysextctl --help\" lists the verbs");
    EXPECT_EQ(refusedLine("frobnicate"), "unknown verb \"frobnicate\"; \"sysextctl --help\" lists the verbs");
    EXPECT_EQ(refusedLine("help frobnicate"), "unknown verb \"frobnicate\"; \"sysextctl --help\" lists the verbs");
    EXPECT_EQ(refusedLine("wait x ready"),
              "unknown state \"ready\"; there is absent, enabled, waiting, disabled, uninstalling");
    EXPECT_EQ(refusedLine("install x 2.0 2004 absent"),
              "unknown state \"absent\"; there is enabled, waiting, disabled, uninstalling");
    EXPECT_EQ(refusedLine("fault next query silent"),
              "unknown kind of request \"query\"; there is activate, deactivate, properties, any");
    EXPECT_EQ(refusedLine("fault next activate 8x"),
              "unknown fault \"8x\"; there is an error code, after, silent, hollow, noprompt, crash");
    EXPECT_EQ(refusedLine("fault next properties hollow"),
              "unknown kind of hollow request \"properties\"; there is activate, deactivate, any");
    EXPECT_EQ(refusedLine("list dext"),
              "unknown category \"dext\"; there is cmio, driver_extension, endpoint_security, network_extension");
    EXPECT_EQ(refusedLine("list --xml"), "list knows no option \"--xml\"; \"sysextctl list --help\" says more");
}

TEST(TheCommandLine, SaysHowAVerbIsUsedIfItsArgumentsAreTooFewOrTooMany) {
    const std::string wait = "usage: sysextctl wait ID STATE [--timeout TIME]; \"sysextctl wait --help\" says more";
    const std::string fault = "usage: sysextctl fault next KIND FAULT; \"sysextctl fault --help\" says more";
    EXPECT_EQ(refusedLine("allow"), "usage: sysextctl allow ID; \"sysextctl allow --help\" says more");
    EXPECT_EQ(refusedLine("allow x y"), "usage: sysextctl allow ID; \"sysextctl allow --help\" says more");
    EXPECT_EQ(refusedLine("restart now"), "usage: sysextctl restart; \"sysextctl restart --help\" says more");
    EXPECT_EQ(refusedLine("wait x"), wait);
    EXPECT_EQ(refusedLine("wait x absent --timeout"), wait);
    EXPECT_EQ(refusedLine("fault activate silent x"), fault);
    EXPECT_EQ(refusedLine("fault next activate silent x"), fault);
}

TEST(TheCommandLine, TakesNoEmptyTextForAFolder) {
    EXPECT_EQ(refused({"applications", ""}).line,
              "usage: sysextctl applications [FOLDER...]; \"sysextctl applications --help\" says more");
}

TEST(TheCommandLine, SaysWhatATimeLooksLike) {
    EXPECT_EQ(refusedLine("wait x absent --timeout -1"), "\"-1\" is not a time; examples are 90s, 5m and 250ms");
    EXPECT_EQ(refusedLine("advance soon"), "\"soon\" is not a time; examples are 90s, 5m and 250ms");
}

TEST(TheCommandLine, AnswersInOneLineWhateverWasTyped) {
    const auto line = refused({"frob\nnicate\u2028\t"}).line;
    EXPECT_EQ(line.find_first_of("\n\t"), std::string::npos);
    EXPECT_EQ(line.find("\u2028"), std::string::npos);
}

} // namespace simulator::ctl
