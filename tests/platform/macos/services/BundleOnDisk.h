#pragma once

#include "platform/macos/BundleReader.h"

#import <Foundation/Foundation.h>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace platform {

/// A bundle on disk, with its list and its images where the system has them.
class BundleOnDisk : public testing::Test {
protected:
    BundleOnDisk() { std::filesystem::create_directories(folder_ / BUNDLE_RESOURCES); }
    ~BundleOnDisk() override { std::filesystem::remove_all(folder_); }

    /// The bundle with that list, a property list; without one where it is empty.
    NSBundle read(const std::string& list) const {
        if (!list.empty()) std::ofstream{folder_ / BUNDLE_LIST} << list;
        @autoreleasepool {
            NSString* const path = [NSString stringWithUTF8String:folder_.c_str()];
            return readBundle([[[::NSBundle alloc] initWithPath:path] autorelease]);
        }
    }
    /// A property list of these keys and values.
    static std::string listOf(const std::string& content) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"><plist version=\"1.0\"><dict>" +
               content + "</dict></plist>";
    }
    /// The bundle's folder, which is removed at the end.
    std::string path() const { return folder_; }

private:
    /// The system keeps what it has read of a path.
    static std::string name() {
        return testing::UnitTest::GetInstance()->current_test_info()->name() + std::to_string(getpid()) + ".app";
    }

    const std::filesystem::path folder_ = std::filesystem::temp_directory_path() / name();
};

} // namespace platform
