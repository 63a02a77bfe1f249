#include "simulator/sysextd/Conversions.h"

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

std::vector<std::string> linesOf(const QList<CopyEntry>& copies) {
    std::vector<std::string> lines;
    for (const CopyEntry& copy : copies)
        lines.push_back((copy.category.section('.', -1) + ' ' + copy.identifier + ' ' + copy.version).toStdString());
    return lines;
}

} // namespace

TEST(TheListOfCopies, IsInTheOrderOfCategoriesThenIdentifiersThenAges) {
    State state;
    add(state, Category::network, "a", "1");
    add(state, Category::endpointSecurity, "b", "2");
    add(state, Category::driver, "d", "10");
    add(state, Category::driver, "c", "4");
    add(state, Category::camera, "z", "5");
    add(state, Category::driver, "d", "9");
    add(state, Category::driver, "c", "4");
    EXPECT_THAT(linesOf(copyEntries(state)),
                ElementsAre("cmio z 5", "driver_extension c 4", "driver_extension c 4", "driver_extension d 10",
                            "driver_extension d 9", "endpoint_security b 2", "network_extension a 1"));
}

} // namespace simulator::tests
