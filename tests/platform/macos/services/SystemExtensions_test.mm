#include "platform/SystemExtensions.h"
#include "tests/macos/gnustep/ScriptedExtensions.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/services/MainQueue.h"
#include "tests/support/Listener.h"

#import <Foundation/Foundation.h>

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

namespace platform {
namespace {

using standin::makeArray;
using standin::makeError;
using standin::makeNumber;
using standin::makeProperties;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::Listener;
using tests::Record;
using Kind = OSSystemExtensionRequest::Kind;

constexpr auto camera = "com.kelvra.ip-camera.cmio";

class TheExtensions : public testing::Test {
protected:
    TheExtensions() {
        service.forget();
        standin::loggedLines().clear();
    }
    ~TheExtensions() override { runMainQueue(); }

    std::weak_ptr<OSSystemExtensionRequest> submit(const Kind kind) {
        const auto make = kind == Kind::activation     ? OSSystemExtensionRequest::activationRequestForExtension
                          : kind == Kind::deactivation ? OSSystemExtensionRequest::deactivationRequestForExtension
                                                       : OSSystemExtensionRequest::propertiesRequestForExtension;
        const auto request = make(camera, DispatchQueue::main());
        request->setDelegate(listener);
        @autoreleasepool {
            OSSystemExtensionManager::sharedManager().submitRequest(request);
        }
        return request;
    }
    const std::vector<std::string>& heard() {
        runMainQueue();
        return record.lines;
    }
    /// What our delegate hears of this answer to a properties request.
    std::vector<OSSystemExtensionProperties> copiesIn(const standin::Object answer) {
        submit(Kind::properties);
        service.found(service.submissions().size() - 1, answer);
        EXPECT_FALSE(heard().empty());
        return record.copies;
    }
    Error errorIn(const standin::Object answer) {
        submit(Kind::activation);
        service.fail(service.submissions().size() - 1, answer);
        runMainQueue();
        return record.errors.at(record.errors.size() - 1);
    }

    standin::ScriptedExtensions& service = standin::ScriptedExtensions::shared();
    Record record;
    std::shared_ptr<Listener> listener = std::make_shared<Listener>("it", record);
};

TEST_F(TheExtensions, AreAskedByAnIdentifierThatIsNoUtf8WithoutHarm) {
    OSSystemExtensionManager::sharedManager().submitRequest(
        OSSystemExtensionRequest::activationRequestForExtension("a\xFF", DispatchQueue::main()));
    EXPECT_THAT(service.submissions(), ElementsAre("activation a\uFFFD"));
}

TEST_F(TheExtensions, FinishWithEachResultThereIsAndAnyOther) {
    for (const long result : {0L, 1L, 2L, -1L, std::numeric_limits<long>::max()}) {
        submit(Kind::activation);
        service.finish(service.submissions().size() - 1, result);
    }
    EXPECT_THAT(heard(), ElementsAre("it finished 0", "it finished 1", "it finished 2", "it finished -1",
                                     "it finished 9223372036854775807"));
}

/// Public sources do not say whether and when a properties request also finishes.
TEST_F(TheExtensions, AreFoundThoughARequestForThemIsSaidToHaveFinished) {
    submit(Kind::properties);
    service.finish(0, 0);
    EXPECT_THAT(heard(), IsEmpty());
    service.found(0, makeArray({}));
    EXPECT_THAT(heard(), ElementsAre("it found 0"));
}

TEST_F(TheExtensions, FailWithNoErrorAsWithOneOfNoDomain) {
    EXPECT_EQ(errorIn(nullptr).domain, "");
    EXPECT_EQ(errorIn(makeNumber(4)).domain, "");
}

TEST_F(TheExtensions, AreFoundWithEmptyTextsWhereThereAreNone) {
    const auto copies = copiesIn(makeArray({makeProperties(nullptr, nullptr, nullptr, true)}));
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(copies[0].bundleIdentifier, "");
    EXPECT_EQ(copies[0].bundleShortVersion, "");
    EXPECT_EQ(copies[0].bundleVersion, "");
    EXPECT_TRUE(copies[0].isEnabled);
}

TEST_F(TheExtensions, AreFoundWithTheTextOfAVersionThatIsANumber) {
    const standin::Object native = makeProperties(camera, "2.1", nullptr);
    standin::setVersion(native, makeNumber(2105));
    const auto copies = copiesIn(makeArray({native}));
    EXPECT_EQ(copies.at(0).bundleVersion, "2105");
}

TEST_F(TheExtensions, AreNotFoundInAnEmptyArrayNorInNoneNorInSomethingElse) {
    EXPECT_THAT(copiesIn(makeArray({})), IsEmpty());
    EXPECT_THAT(copiesIn(nullptr), IsEmpty());
    EXPECT_THAT(copiesIn(makeNumber(2)), IsEmpty());
    EXPECT_EQ(record.lines.size(), 3U);
}

TEST_F(TheExtensions, AreFoundAmongObjectsOfOtherClasses) {
    const auto copies = copiesIn(makeArray({makeNumber(1), makeProperties(camera, "2.1", "2105"),
                                            makeError("x", 1, nullptr), makeProperties("other", "1", "1")}));
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[0].bundleIdentifier, camera);
    EXPECT_EQ(copies[1].bundleIdentifier, "other");
}

TEST_F(TheExtensions, AskAboutAReplacementOfNothingByANumber) {
    submit(Kind::activation);
    service.askReplacement(0, nullptr, makeNumber(7));
    EXPECT_THAT(heard(), ElementsAre("it is asked"));
    EXPECT_EQ(record.existing.description, "");
    EXPECT_EQ(record.existing.bundleIdentifier, "");
    EXPECT_EQ(record.replacement.description, "7");
    EXPECT_EQ(record.replacement.bundleIdentifier, "");
    EXPECT_THAT(service.replacementAnswers(), ElementsAre(1));
}

TEST_F(TheExtensions, SayNoMoreAfterTheLastCallback) {
    const auto request = submit(Kind::activation);
    service.finish(0, 0);
    service.finish(0, 1);
    service.fail(0, makeError(standin::serviceDomain(), 4, nullptr));
    service.needsApproval(0);
    service.askReplacement(0, nullptr, nullptr);
    service.found(0, makeArray({}));
    EXPECT_THAT(heard(), ElementsAre("it finished 0"));
    EXPECT_THAT(service.replacementAnswers(), testing::Each(0));
    EXPECT_TRUE(request.expired());
    service.needsApproval(0);
    EXPECT_THAT(heard(), ElementsAre("it finished 0"));
}

/// A delegate that breaks its word not to throw.
void breakAt(Record& record, const bool objectiveC) {
    record.onLine = [objectiveC] {
        if (objectiveC) [NSException raise:NSGenericException format:@"broken"];
        std::vector<int>{}.at(1) = 0;
    };
}

TEST_F(TheExtensions, LetNoExceptionOutOfACallback) {
    for (const bool objectiveC : {false, true}) {
        breakAt(record, objectiveC);
        submit(Kind::activation);
        const std::size_t submission = service.submissions().size() - 1;
        service.needsApproval(submission);
        service.askReplacement(submission, nullptr, nullptr);
        service.finish(submission, 0);
        heard();
        EXPECT_EQ(standin::loggedLines().size(), 3U);
        EXPECT_EQ(service.alive(), 0U);
        standin::loggedLines().clear();
    }
    EXPECT_THAT(service.replacementAnswers(), ElementsAre(0, 0));
}

TEST_F(TheExtensions, LeaveNothingBehindAfterAThousandRequests) {
    const auto ask = [this] {
        @autoreleasepool {
            for (const Kind kind : {Kind::activation, Kind::deactivation, Kind::properties})
                submit(kind);
            const std::size_t last = service.submissions().size();
            service.needsApproval(last - 3);
            service.finish(last - 3, 0);
            service.fail(last - 2, makeError(standin::serviceDomain(), 11, "Canceled."));
            service.found(last - 1, makeArray({makeProperties(camera, "2.1", "2105")}));
            runMainQueue();
        }
    };
    ask();
    const auto before = standin::liveObjects();
    for (int i = 0; i < 334; ++i)
        ask();
    EXPECT_EQ(standin::liveObjects(), before);
    EXPECT_EQ(service.submissions().size(), 1005U);
}

} // namespace
} // namespace platform
