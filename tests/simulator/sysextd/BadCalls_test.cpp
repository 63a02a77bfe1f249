// Calls that are malformed, too large or too many: each is refused, and the service lives.

#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/sysextd/TheService.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <algorithm>
#include <csignal>

namespace simulator::tests {

namespace {

const QString invalidArgument = "com.kelvra.Simulator1.Error.InvalidArgument";
const QString limitExceeded = "com.kelvra.Simulator1.Error.LimitExceeded";
const QString huge(4'000'000, 'x');

/// A program that calls what it likes.
class ABadCall : public TheService {
protected:
    ABadCall() { must(control().Install(camera, "1.0", "1", "enabled")); }
    /// What it did, it did to the same service as in the beginning, which still has what it had and works.
    ~ABadCall() override {
        EXPECT_EQ(processOfService(), process_);
        EXPECT_EQ(copies(camera), std::vector<std::string>{"1 enabled"});
        must(control().Disable(camera));
    }

    static QDBusMessage message(const QString& method, const QVariantList& arguments,
                                const QString& interface = controlInterfaceName, const QString& path = objectPath) {
        QDBusMessage message = QDBusMessage::createMethodCall(serviceName, path, interface, method);
        message.setArguments(arguments);
        return message;
    }

    QString errorOfCall(const QDBusMessage& call) { return program_.call(call).errorName(); }
    QString errorOfControl(const QString& method, const QVariantList& arguments) {
        return errorOfCall(message(method, arguments));
    }
    QString errorOfSubmit(const QString& token, const QString& kind, const QString& identifier) {
        return errorOfCall(message("Submit", {token, kind, identifier}, interfaceName));
    }

    QDBusConnection program_ = bus().connect();

private:
    const uint process_ = processOfService();
};

TEST_F(ABadCall, OfNoSuchMethodIsRefused) {
    EXPECT_EQ(errorOfControl("Explode", {}), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_EQ(errorOfCall(message("Allow", {camera}, "com.kelvra.Nothing")),
              "org.freedesktop.DBus.Error.UnknownInterface");
    EXPECT_EQ(errorOfCall(message("Allow", {camera}, controlInterfaceName, "/nowhere")),
              "org.freedesktop.DBus.Error.UnknownObject");
}

TEST_F(ABadCall, WithArgumentsOfOtherTypesIsRefused) {
    const QString unknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";
    EXPECT_EQ(errorOfControl("Allow", {}), unknownMethod);
    EXPECT_EQ(errorOfControl("Allow", {qlonglong{1}}), unknownMethod);
    EXPECT_EQ(errorOfControl("Advance", {"soon"}), unknownMethod);
    EXPECT_EQ(errorOfControl("SetProfile", {"text"}), unknownMethod);
    EXPECT_EQ(errorOfControl("SetApplicationsFolders", {"/Applications"}), unknownMethod);
    EXPECT_EQ(errorOfCall(message("Submit", {"a", "activation"}, interfaceName)), unknownMethod);
    EXPECT_EQ(errorOfCall(message("Submit", {"a", "activation", QStringList{camera}}, interfaceName)), unknownMethod);
}

TEST_F(ABadCall, WithWordsThatMeanNothingIsRefused) {
    EXPECT_EQ(errorOfSubmit("", "properties", camera), invalidArgument);
    EXPECT_EQ(errorOfSubmit("two\nlines", "properties", camera), invalidArgument);
    EXPECT_EQ(errorOfSubmit("a", "reactivation", camera), invalidArgument);
    EXPECT_EQ(errorOfSubmit("a", "activation", "tab\t"), invalidArgument);
    EXPECT_EQ(errorOfCall(message("AnswerReplacement", {"a", "replace"}, interfaceName)), invalidArgument);
    EXPECT_EQ(errorOfControl("Install", {camera, "1\n", "1", "enabled"}), invalidArgument);
    EXPECT_EQ(errorOfControl("SetProfile", {QByteArray{"\0\xff", 2}}), invalidArgument);
}

TEST_F(ABadCall, ThatIsTooLargeIsRefused) {
    EXPECT_EQ(errorOfSubmit(QString(129, 'x'), "properties", camera), invalidArgument);
    EXPECT_EQ(errorOfSubmit(huge, huge, huge), invalidArgument);
    for (const auto* const method : {"Allow", "Deny", "Authorize", "Refuse", "Disable", "Enable"})
        EXPECT_EQ(errorOfControl(method, {huge}), invalidArgument);
    EXPECT_EQ(errorOfControl("Install", {camera, huge, huge, "enabled"}), invalidArgument);
    EXPECT_EQ(errorOfControl("Install", {camera, "1", "1", huge}), invalidArgument);
    EXPECT_EQ(errorOfControl("Uninstall", {"-", huge}), invalidArgument);
    EXPECT_EQ(errorOfControl("SetProfile", {QByteArray(1'048'577, 'x')}), invalidArgument);
    EXPECT_EQ(errorOfControl("SetApplicationsFolders", {QStringList{"/" + huge}}), invalidArgument);
    EXPECT_EQ(errorOfControl("SetApplicationsFolders", {QStringList(100'000, "/tmp")}), limitExceeded);
    EXPECT_EQ(errorOfControl("SetSwitch", {huge, huge}), invalidArgument);
    EXPECT_EQ(errorOfControl("OrderFault", {"any", "error", huge, 1LL, huge, 0LL}), invalidArgument);
    EXPECT_EQ(errorOfControl("OrderFault", {"any", "delay", "", 0LL, "", std::numeric_limits<qlonglong>::max()}),
              invalidArgument);
}

/// A binary list of lists, each of which holds the next one twice, and the last one a truth.
QByteArray aListOfMoreThanAnyMemoryHolds() {
    constexpr char values = 60;
    QByteArray bytes = "bplist00";
    QByteArray offsets;
    for (char next = 1; next <= values; ++next) {
        offsets += static_cast<char>(bytes.size());
        bytes += next < values ? '\xa2' + QByteArray(2, next) : QByteArray{"\x09"};
    }
    const auto table = static_cast<char>(bytes.size());
    const QByteArray zeros(7, '\0');
    return bytes + offsets + zeros.first(6) + "\x01\x01" + zeros + values + zeros + '\0' + zeros + table;
}

TEST_F(ABadCall, WithAProfileThatCannotBeReadIsRefused) {
    EXPECT_EQ(errorOfControl("SetProfile", {aListOfMoreThanAnyMemoryHolds()}), invalidArgument);
}

TEST_F(ABadCall, IsQuotedInOneShortLine) {
    const QString text = program_.call(message("SetSwitch", {"a\nb" + huge, "x"})).errorMessage();
    EXPECT_EQ(text.size(), 200);
    EXPECT_TRUE(text.startsWith("'a b"));
}

TEST_F(ABadCall, AsksNoMoreThanTheServiceTakesAtOnce) {
    for (int order = 0; order < 257; ++order)
        must(control().OrderFault("properties", "silent", {}, 0, {}, 0));
    for (int token = 0; token < 256; ++token)
        ASSERT_EQ(errorOfSubmit(QString::number(token), "properties", camera), "");
    EXPECT_EQ(errorOfSubmit("more", "properties", camera), limitExceeded);
    const auto other = application();
    other->tell(QString{"submit a activation "} + driver);
    EXPECT_TRUE(other->hears("a needs approval"));
}

TEST_F(ABadCall, OrdersNoMoreFaultsThanTheServiceKeeps) {
    for (int order = 0; order < 1000; ++order)
        must(control().OrderFault("any", "silent", {}, 0, {}, 0));
    EXPECT_EQ(errorOfControl("OrderFault", {"any", "silent", "", 0LL, "", 0LL}), limitExceeded);
}

/// The service stands still until all of the calls wait for it.
TEST_F(ABadCall, InAFloodIsRefusedAndEachIsAnswered) {
    signalService(SIGSTOP);
    QList<QDBusPendingCall> calls;
    for (int call = 0; call < 4000; ++call)
        calls.push_back(program_.asyncCall(message("ListIdentifiers", {})));
    ASSERT_TRUE(program_.interface()->isServiceRegistered(serviceName).value());
    signalService(SIGCONT);
    int refused = 0;
    for (QDBusPendingCall& call : calls) {
        call.waitForFinished();
        if (!call.isError()) continue;
        ASSERT_EQ(call.error().name(), limitExceeded);
        ++refused;
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, 4000);
    EXPECT_EQ(errorOfControl("ListIdentifiers", {}), "");
}

} // namespace

} // namespace simulator::tests
