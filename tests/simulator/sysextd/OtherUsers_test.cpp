// Programs of users whose machine it is not.

#include "Simulator1Adaptor.h"
#include "simulator/bus/Names.h"
#include "simulator/sysextd/BusObject.h"
#include "tests/simulator/support/TestApplication.h"
#include "tests/simulator/support/Until.h"
#include "tests/support/PrivateBus.h"

#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>
#include <unistd.h>

namespace simulator::tests {

namespace {

/// Acts as a user who owns nothing. Only root can.
class AsNobody {
public:
    AsNobody() : user_{geteuid()} {
        if (seteuid(65534) != 0) throw std::runtime_error{"cannot act as another user"};
    }
    ~AsNobody() {
        if (seteuid(user_) != 0) std::abort();
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    uid_t user_;
};

struct Method {
    QString interface;
    QString name;
    QVariantList arguments;
};

QVariant sampleOf(const QString& type) {
    if (type == "as") return QStringList{"/Applications"};
    if (type == "ay") return QByteArray{"profile"};
    if (type == "b") return true;
    if (type == "x") return qlonglong{1};
    EXPECT_EQ(type.toStdString(), "s");
    return QString{"text"};
}

/// Every method of the service's own interfaces, with arguments that it takes.
QList<Method> methodsIn(const QString& description) {
    QList<Method> methods;
    QString interface;
    QXmlStreamReader xml{description};
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        const QString name = attributes.value("name").toString();
        if (xml.name() == QString{"interface"}) interface = name;
        if (!interface.startsWith(interfaceName)) continue;
        if (xml.name() == QString{"method"}) methods.push_back({interface, name, {}});
        if (xml.name() != QString{"arg"} || attributes.value("direction") != QString{"in"}) continue;
        methods.back().arguments.push_back(sampleOf(attributes.value("type").toString()));
    }
    return methods;
}

/// Who is the other: the machine's owner, which every user can arrange, or the program that calls, which only root can.
enum class Other { owner, caller };

/// The service in this process, on a bus that everyone may use, and a program of a user who is not its owner.
class AProgramOfAnotherUser : public testing::TestWithParam<Other> {
protected:
    AProgramOfAnotherUser() {
        registerTypes();
        bus_.openToEveryone();
        connection_.registerObject(objectPath, &object_);
        connection_.registerService(serviceName);
        connectCaller();
    }

    static uid_t owner() { return GetParam() == Other::owner ? geteuid() + 1 : geteuid(); }

    QDBusMessage call(const Method& method) {
        QDBusMessage message = QDBusMessage::createMethodCall(serviceName, objectPath, method.interface, method.name);
        message.setArguments(method.arguments);
        const QDBusPendingCallWatcher call{caller_->asyncCall(message)};
        EXPECT_TRUE(until([&] { return call.isFinished(); }));
        return call.reply();
    }

    QList<Method> methods() {
        const QDBusMessage reply = call({"org.freedesktop.DBus.Introspectable", "Introspect", {}});
        return methodsIn(reply.arguments().value(0).toString());
    }

    const State& state() const { return service_.machine().state(); }

private:
    void connectCaller() {
        if (GetParam() == Other::owner) {
            caller_ = bus_.connect();
        } else {
            const AsNobody nobody;
            caller_ = bus_.connect();
        }
    }

    TestApplication application_;
    QTemporaryDir folder_;
    ::tests::PrivateBus bus_;
    QDBusConnection connection_ = bus_.connect();
    std::optional<QDBusConnection> caller_;
    Service service_{folder_.filePath("store.sqlite").toStdString()};
    BusObject object_{connection_, service_, owner()};
    Simulator1Adaptor applications_{&object_};
    ControlAdaptor control_{&object_};
};

TEST_P(AProgramOfAnotherUser, IsRefusedWhateverItCallsAndChangesNothing) {
    const State before = state();
    const QList<Method> all = methods();
    ASSERT_GE(all.size(), 25);
    for (const Method& method : all) {
        const QDBusMessage reply = call(method);
        EXPECT_EQ(reply.errorName().toStdString(), "com.kelvra.Simulator1.Error.NotPermitted")
            << method.name.toStdString();
    }
    EXPECT_EQ(state(), before);
}

std::vector<Other> others() {
    return geteuid() == 0 ? std::vector{Other::owner, Other::caller} : std::vector{Other::owner};
}

std::string nameOfOther(const testing::TestParamInfo<Other>& info) {
    return info.param == Other::owner ? "ThanTheOwner" : "ThanRoot";
}

INSTANTIATE_TEST_SUITE_P(Other, AProgramOfAnotherUser, testing::ValuesIn(others()), nameOfOther);

} // namespace

} // namespace simulator::tests
