#include "tests/contract/ContractTest.h"

namespace contract {
namespace {

using testing::ElementsAre;

/// Public sources do not say whether and when a properties request also finishes.
class APropertiesRequest : public testing::Test {
protected:
    APropertiesRequest() { submit("question", Kind::properties); }

    void submit(const std::string& name, const Kind kind) {
        listeners.push_back(std::make_shared<Listener>(name, record));
        const auto request = makeRequest(kind, camera);
        request->setDelegate(listeners.back());
        service->manager().submitRequest(request);
    }
    /// What the listeners have heard once a later activation has finished.
    const std::vector<std::string>& heard() {
        const std::size_t place = listeners.size();
        const std::string later = "activation " + std::to_string(place);
        submit(later, Kind::activation);
        service->finish(place, 0);
        service->deliver([&] { return !record.lines.empty() && record.lines.back() == later + " finished 0"; });
        return record.lines;
    }

    std::unique_ptr<PlayedService> service = makePlayedService();
    Record record;
    std::vector<std::shared_ptr<Listener>> listeners;
};

TEST_F(APropertiesRequest, IgnoresAFinish) {
    service->finish(0, 0);
    EXPECT_THAT(heard(), ElementsAre("activation 1 finished 0"));
    service->findNothing(0);
    service->finish(0, 1);
    EXPECT_THAT(heard(), ElementsAre("activation 1 finished 0", "question found 0", "activation 2 finished 0"));
}

} // namespace
} // namespace contract
