#include "tests/model/ModelTest.h"

#include <string>

// What an answer costs is held by counting: one notification per write, and no copy of the records.

namespace model {
namespace {

using platform::fake::awaitingCopy;
using platform::fake::enabledCopy;

constexpr std::size_t tenThousand = 10'000;
constexpr std::size_t megabyte = 1'048'576;

class ALargeAnswer : public ModelTest {};

TEST_F(ALargeAnswer, OfTenThousandEnabledCopiesMakesOneNotificationPerWrite) {
    Copies copies;
    for (std::size_t build = 1; build <= tenThousand; ++build)
        copies.push_back(enabledCopy(camera, "2.1", std::to_string(build)));
    std::size_t notifications = 0;
    const auto subscription = model->objectWillChange().subscribe([&] { ++notifications; });
    answer(std::move(copies));
    EXPECT_EQ(notifications, tenThousand * 4 + 3); // present, enabled, version, intversion; awaiting, uninst, state
    EXPECT_EQ(text(cameraPosition),
              "com.kelvra.ip-camera.cmio 'Enabled' present enabled '2.1/10000' VideoCamera 'Camera Driver' 10000");
    EXPECT_EQ(platform::fake::printedLines().size(), 1U);
}

TEST_F(ALargeAnswer, OfStrangersButForTheFirstMakesNoNotificationForThem) {
    Copies copies(tenThousand, enabledCopy("com.kelvra.unknown", "1", "1"));
    copies.front() = awaitingCopy(camera, "1", "1");
    std::size_t notifications = 0;
    const auto subscription = model->objectWillChange().subscribe([&] { ++notifications; });
    answer(std::move(copies));
    EXPECT_EQ(notifications, 5U); // present, awaiting; enabled, uninst, state
}

TEST_F(ALargeAnswer, CopiesNoRecordPerWrite) {
    answer({enabledCopy(base, std::string(megabyte, '1'), "1")});
    const auto* const list = model->sei().data();
    const auto* const longText = record(basePosition).version.data();
    bool inPlace = true;
    const auto subscription = model->objectWillChange().subscribe(
        [&] { inPlace = inPlace && model->sei().data() == list && record(basePosition).version.data() == longText; });
    answer(Copies(tenThousand, enabledCopy(camera, "2.1", "2105")));
    EXPECT_TRUE(inPlace);
    EXPECT_EQ(model->sei().data(), list);
    EXPECT_EQ(record(basePosition).version.data(), longText);
}

TEST_F(ALargeAnswer, OfMegabyteLongVersionsIsFoldedLikeAnyOther) {
    Copies copies;
    for (const char digit : {'1', '2', '3'})
        copies.push_back(enabledCopy(camera, std::string(megabyte, digit), std::string(megabyte, '0') + digit));
    answer(std::move(copies));
    EXPECT_TRUE(record(cameraPosition).version == std::string(megabyte, '3') + "/" + std::string(megabyte, '0') + "3");
    EXPECT_EQ(record(cameraPosition).intversion, 3);
}

TEST_F(ALargeAnswer, MayComeInPassesThatOverlap) {
    for (std::size_t pass = 0; pass < 100; ++pass)
        model->enumerate();
    for (std::size_t submission = 0; submission < 300; ++submission)
        service().foundProperties(submission, Copies(100, enabledCopy(network, "2.1", std::to_string(submission))));
    deliver();
    EXPECT_EQ(record(networkPosition).intversion, 299);
    EXPECT_EQ(platform::fake::printedLines().size(), 300U);
}

} // namespace
} // namespace model
