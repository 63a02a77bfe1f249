#pragma once

#include "simulator/store/Store.h"
#include "simulator/store/StoreFailure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace simulator {

/// A folder in which a store may be, at a path of which only the first folder is there.
class StoreFile : public testing::Test {
protected:
    StoreFile();
    ~StoreFile() override;

    /// The line of the failure.
    std::string whyNotOpened() const;
    std::string lineWith(const std::string& reason) const { return file.string() + ": " + reason; }
    /// Runs a statement on the file as another program would; makes the file where there is none.
    void tamper(const std::string& statement) const;

    /// Of the store, or of the file beside it whose name ends so.
    std::string bytes(const std::string& ending = {}) const;
    void write(const std::string& bytes, const std::string& ending = {}) const;
    /// The names in the store's folder, in alphabetical order.
    std::vector<std::string> names() const;

    std::filesystem::path folder;
    std::filesystem::path file;
};

} // namespace simulator
