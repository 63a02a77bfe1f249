#include "platform/linux/SimulatorAnswer.h"
#include "tests/fuzz/Bytes.h"
#include "tests/support/Listener.h"
#include "tests/support/ScriptedService.h"

#include <QCoreApplication>
#include <QDBusServer>
#include <QEventLoop>

#include <array>

// A message of any name with any arguments: a peer sends it over a socket, and it is read as an answer. The delegate
// is told what its name says; or, if its arguments are others, that the request failed; or it names no request.

namespace tests {

namespace {

/// A message, its arguments (a text, a copy, a list of copies, an integer), and what is told.
struct Answer {
    const char* member;
    const char* arguments;
    std::string_view told;
};
constexpr std::array answers{
    Answer{"ReplacementAsked", "tcc", "a is asked"}, Answer{"NeedsApproval", "t", "a needs approval"},
    Answer{"Finished", "ti", "a finished "},         Answer{"Failed", "ttit", "a failed "},
    Answer{"FoundProperties", "tl", "a found "},     Answer{"Other", "none", ""}};

QString textIn(Bytes& bytes) {
    return QString::fromStdString(bytes.text()).remove(QChar::Null);
}

CopyOnTheBus copyIn(Bytes& bytes) {
    return {textIn(bytes), textIn(bytes), textIn(bytes), bytes.choice(2) == 0, bytes.choice(2) == 0};
}

QVariant argumentIn(Bytes& bytes, const char kind) {
    if (kind == 't') return textIn(bytes);
    if (kind == 'c') return onTheBus(copyIn(bytes));
    if (kind == 'i') return static_cast<qlonglong>(bytes.choice(256));
    if (kind != 'l') return 1.5;
    QList<CopyOnTheBus> copies;
    for (std::size_t count = bytes.choice(4); count > 0; --count)
        copies.append(copyIn(bytes));
    return onTheBus(copies);
}

/// Both ends of a socket.
class Peers : public QDBusVirtualObject {
public:
    Peers() {
        QObject::connect(&server_, &QDBusServer::newConnection, this, [this](QDBusConnection connection) {
            connection.registerVirtualObject("/", this);
            arrived_.exit();
        });
        arrived_.exec();
    }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        received_ = message;
        arrived_.exit();
        return true;
    }
    /// The message as it comes out at the other end.
    QDBusMessage sent(const char* const member, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall({}, "/", "a.b", member);
        message.setArguments(arguments);
        must(sender_.send(message), "a message cannot be sent");
        arrived_.exec();
        return received_;
    }

private:
    QDBusServer server_;
    QEventLoop arrived_;
    QDBusConnection sender_ = QDBusConnection::connectToPeer(server_.address(), "sender");
    QDBusMessage received_;
};

Peers& peers() {
    static int count = 0;
    static const QCoreApplication application{count, nullptr};
    static Peers peers;
    return peers;
}

} // namespace

void fuzz(Bytes bytes) {
    const auto [member, right, told] = answers[bytes.choice(answers.size())];
    constexpr std::size_t mostArguments = 20; // no signature has more than 255 bytes, and a list's has nine
    const std::string kinds = bytes.choice(2) == 0 ? right : bytes.text().substr(0, mostArguments);
    QVariantList arguments;
    for (const char kind : kinds)
        arguments.append(argumentIn(bytes, kind));
    const auto read = platform::readAnswer(peers().sent(member, arguments));
    must(read.has_value() == (!told.empty() && kinds.starts_with('t')), "an answer is none, or another message is one");
    if (!read) return;
    must(read->token == arguments.front().toString(), "an answer names another request");
    Record record;
    Listener listener{"a", record};
    const auto queue = platform::DispatchQueue::main();
    read->answer.deliver(&listener, *OSSystemExtensionRequest::propertiesRequestForExtension("a", queue));
    must(record.lines.size() == 1 && record.lines.front().starts_with(kinds == right ? told : "a failed 1"),
         "the delegate is told something else");
}

} // namespace tests
