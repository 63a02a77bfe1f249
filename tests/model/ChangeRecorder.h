#pragma once

#include "model/DriverLoadingViewModel.h"
#include "tests/model/StateNames.h"
#include "tests/support/DriverLoadingViewModelTestAccess.h"
#include "tests/support/FakeSystemExtensions.h"

#include <string>
#include <vector>

namespace model {

/// Takes a picture of a model at each of its notifications.
class ChangeRecorder {
public:
    struct Picture {
        DriverLoadingStateMachine::State state;
        std::vector<SysExtInfo> records;
        std::string lastError;
        std::size_t submissions;
    };

    explicit ChangeRecorder(DriverLoadingViewModel& model) : model_{model} {}
    ChangeRecorder(const ChangeRecorder&) = delete;
    ChangeRecorder& operator=(const ChangeRecorder&) = delete;

    /// As the model was when each notification came, which is before the change that it announced.
    const std::vector<Picture>& pictures() const { return pictures_; }

    /// What changed after each notification, until the next one or now; "nothing" where an equal value was written.
    std::vector<std::string> changes() const {
        std::vector<std::string> all;
        for (std::size_t at = 0; at < pictures_.size(); ++at)
            all.push_back(difference(pictures_[at], at + 1 < pictures_.size() ? pictures_[at + 1] : picture()));
        return all;
    }

private:
    Picture picture() const {
        return {DriverLoadingViewModelTestAccess::state(model_), model_.sei(),
                DriverLoadingViewModelTestAccess::lastError(model_),
                platform::fake::SystemExtensions::shared().submissions().size()};
    }

    static std::string difference(const Picture& before, const Picture& after) {
        std::string text;
        if (before.state != after.state) text += std::string{" state "} + nameOf(after.state);
        for (std::size_t position = 0; position < before.records.size(); ++position)
            text += difference(std::to_string(position), before.records[position], after.records.at(position));
        return text.empty() ? "nothing" : text.substr(1);
    }

    static std::string difference(const std::string& position, const SysExtInfo& before, const SysExtInfo& after) {
        std::string text;
        const auto compare = [&](const char* name, const auto SysExtInfo::*field) {
            if (before.*field != after.*field) text += " " + position + "." + name;
        };
        compare("id", &SysExtInfo::id);
        compare("state", &SysExtInfo::state);
        compare("present", &SysExtInfo::present);
        compare("enabled", &SysExtInfo::enabled);
        compare("awaiting", &SysExtInfo::awaiting);
        compare("reboot", &SysExtInfo::reboot);
        compare("uninst", &SysExtInfo::uninst);
        compare("version", &SysExtInfo::version);
        compare("iconName", &SysExtInfo::iconName);
        compare("driverName", &SysExtInfo::driverName);
        compare("intversion", &SysExtInfo::intversion);
        return text;
    }

    DriverLoadingViewModel& model_;
    std::vector<Picture> pictures_;
    platform::Subscription subscription_{
        model_.objectWillChange().subscribe([this] { pictures_.push_back(picture()); })};
};

} // namespace model
