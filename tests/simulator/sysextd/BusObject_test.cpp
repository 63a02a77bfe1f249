// What the machine knows and says, as it goes over the bus.

#include "simulator/bus/Types.h"
#include "simulator/core/Words.h"
#include "simulator/sysextd/BusObject.h"
#include "tests/support/QtTesting.h"

#include <gmock/gmock.h>

namespace simulator::tests {

namespace {

using testing::ElementsAre;

/// Adds a copy that is younger than the others.
void add(State& state, Category category, const char* identifier, const char* version) {
    Copy copy;
    copy.number = ++state.lastNumber;
    copy.extension.category = category;
    copy.extension.identifier = identifier;
    copy.version.version = version;
    copy.state = CopyState::enabled;
    state.copies.emplace(copy.number, copy);
}

TEST(TheListOfCopies, IsInTheOrderOfCategoriesThenIdentifiersThenAges) {
    State state;
    add(state, Category::network, "a", "1");
    add(state, Category::endpointSecurity, "b", "2");
    add(state, Category::driver, "d", "10");
    add(state, Category::driver, "c", "4");
    add(state, Category::camera, "z", "5");
    add(state, Category::driver, "d", "9");
    std::vector<std::string> lines;
    for (const CopyEntry& copy : copyEntries(state))
        lines.push_back((copy.category.section('.', -1) + ' ' + copy.identifier + ' ' + copy.version).toStdString());
    EXPECT_THAT(lines, ElementsAre("cmio z 5", "driver_extension c 4", "driver_extension d 10", "driver_extension d 9",
                                   "endpoint_security b 2", "network_extension a 1"));
}

QString textOf(const CopyRecord& copy) {
    const std::string flags = std::string{copy.isEnabled ? "e" : "-"} + (copy.isAwaitingUserApproval ? "a" : "-") +
                              (copy.isUninstalling ? "u" : "-");
    return QString::fromStdString(joined({copy.identifier, copy.shortVersion, copy.version, flags}, " "));
}

QString textOf(const QVariant& argument) {
    if (argument.canConvert<CopyRecord>()) return textOf(argument.value<CopyRecord>());
    if (!argument.canConvert<QList<CopyRecord>>()) return argument.toString();
    QStringList copies;
    for (const CopyRecord& copy : argument.value<QList<CopyRecord>>())
        copies += textOf(copy);
    return copies.join(", ");
}

/// The name of the signal that carries an answer, and its arguments.
std::string sent(AnswerBody body) {
    const QDBusMessage message = messageOf({":1.7", "token", std::move(body)});
    EXPECT_EQ(message.type(), QDBusMessage::SignalMessage);
    EXPECT_EQ(message.service(), ":1.7");
    EXPECT_EQ(message.path(), objectPath);
    EXPECT_EQ(message.interface(), interfaceName);
    QStringList parts{message.member()};
    for (const QVariant& argument : message.arguments())
        parts += textOf(argument);
    return parts.join(" | ").toStdString();
}

TEST(AnAnswer, IsASignalToItsClient) {
    const CopyRecord old{"com.x", "2.0", "2004", true, false, false};
    const CopyRecord young{"com.x", "2.1", "2105", false, true, false};
    const CopyRecord leaving{"com.x", "1.0", "1", false, false, true};
    EXPECT_EQ(sent(ReplacementAsked{old, young}), "ReplacementAsked | token | com.x 2.0 2004 e-- | com.x 2.1 2105 -a-");
    EXPECT_EQ(sent(NeedsApproval{}), "NeedsApproval | token");
    EXPECT_EQ(sent(Finished{1}), "Finished | token | 1");
    EXPECT_EQ(sent(Failure{"D", -4, "caf\u00e9"}), "Failed | token | D | -4 | caf\u00e9");
    EXPECT_EQ(sent(FoundProperties{{leaving, old}}), "FoundProperties | token | com.x 1.0 1 --u, com.x 2.0 2004 e--");
    EXPECT_EQ(sent(FoundProperties{}), "FoundProperties | token | ");
}

} // namespace

} // namespace simulator::tests
