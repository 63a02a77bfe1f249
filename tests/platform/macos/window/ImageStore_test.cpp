#include "platform/macos/ImageStore.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <string>

namespace platform {
namespace {

class TheImages : public testing::Test {
protected:
    TheImages() : folder_{std::filesystem::temp_directory_path() / ("images-" + std::to_string(getpid()))} {
        std::filesystem::create_directories(folder_);
        std::filesystem::copy_file(IMAGES "/trash.png", folder_ / "drawn.only.png");
    }
    ~TheImages() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path folder_;
};

TEST_F(TheImages, HaveTheDrawingOfTheBundleForASymbolThatTheSystemLacks) {
    const ImageStore images{folder_};
    EXPECT_NE(images.image({"drawn.only", ui::ImageReference::Source::system}), nullptr);
}

TEST_F(TheImages, AreNoneWhereThereIsNeitherASymbolNorADrawing) {
    const ImageStore images{folder_};
    EXPECT_EQ(images.image({"nothing", ui::ImageReference::Source::system}), nullptr);
    EXPECT_EQ(images.size({"nothing", ui::ImageReference::Source::system}), ui::Size{});
}

} // namespace
} // namespace platform
