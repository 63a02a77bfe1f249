#include "platform/Bundle.h"

#include "platform/linux/BundleReader.h"

#include <QProcess>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <string_view>
#include <sys/stat.h>

namespace platform {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::string_view head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                                  "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\""
                                  " \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"><plist version=\"1.0\">";

class ABundle : public testing::Test {
protected:
    ABundle() { fs::create_directories(bundle / "Contents"); }

    void writeInfo(const std::string_view bytes) const { std::ofstream{infoFile, std::ios::binary} << bytes; }
    void writeXml(const std::string& body) const { writeInfo(std::string{head} + body + "</plist>"); }

    /// Why the bundle has no dictionary; empty if it has one.
    std::string problem() const {
        const auto read = readBundle(bundle);
        EXPECT_EQ(read.infoDictionary() == nullptr, !read.infoProblem().empty());
        return read.infoProblem();
    }

    InfoDictionary dictionary() const {
        const auto read = readBundle(bundle);
        EXPECT_THAT(read.infoProblem(), IsEmpty());
        return read.infoDictionary() ? *read.infoDictionary() : InfoDictionary{};
    }

    const QTemporaryDir folder;
    const fs::path bundle = fs::path{folder.path().toStdString()} / "Ärger & Co.app";
    const fs::path infoFile = bundle / "Contents" / "Info.plist";
};

TEST_F(ABundle, HasTheTextsOfItsDictionaryUnchanged) {
    writeXml("<dict><key>CFBundleVersion</key><string>2105</string><key>Name</key><string>Ä &amp; B</string>"
             "<key>Spaces</key><string> 42 </string><key>Empty</key><string></string><key>None</key><string/></dict>");
    EXPECT_EQ(dictionary(),
              (InfoDictionary{
                  {"CFBundleVersion", "2105"}, {"Name", "Ä & B"}, {"Spaces", " 42 "}, {"Empty", ""}, {"None", ""}}));
}

TEST_F(ABundle, HasNoTextForAValueOfAnotherType) {
    for (const std::string value :
         {"<integer>2105</integer>", "<real>1.5</real>", "<true/>", "<array><string>2105</string></array>", "<dict/>",
          "<data>AAAA</data>", "<date>2024-01-01T00:00:00Z</date>"}) {
        writeXml("<dict><key>CFBundleVersion</key>" + value + "</dict>");
        EXPECT_EQ(dictionary(), (InfoDictionary{{"CFBundleVersion", std::nullopt}})) << value;
    }
}

TEST_F(ABundle, ReadsABinaryDictionary) {
    // "CFBundleVersion" is the text 2105; the others are a boolean, a list, a number and a non-ASCII text.
    constexpr std::string_view bytes{
        "\x62\x70\x6c\x69\x73\x74\x30\x30\xd6\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0b\x0c\x0d\x54\x42\x6f\x6f\x6c\x5f"
        "\x10\x0f\x43\x46\x42\x75\x6e\x64\x6c\x65\x56\x65\x72\x73\x69\x6f\x6e\x54\x4c\x69\x73\x74\x56\x4e\x75\x6d\x62"
        "\x65\x72\x54\x52\x65\x61\x6c\x56\x55\x6d\x6c\x61\x75\x74\x09\x54\x32\x31\x30\x35\xa1\x0a\x10\x01\x10\x07\x23"
        "\x3f\xf8\x00\x00\x00\x00\x00\x00\x61\x00\xe4\x08\x15\x1a\x2c\x31\x38\x3d\x44\x45\x4a\x4c\x4e\x50\x59\x00\x00"
        "\x00\x00\x00\x00\x01\x01\x00\x00\x00\x00\x00\x00\x00\x0e\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00"
        "\x00\x00\x5c",
        138};
    writeInfo(bytes);
    EXPECT_EQ(dictionary(), (InfoDictionary{{"CFBundleVersion", "2105"},
                                            {"Umlaut", "ä"},
                                            {"Bool", std::nullopt},
                                            {"List", std::nullopt},
                                            {"Number", std::nullopt},
                                            {"Real", std::nullopt}}));
}

TEST_F(ABundle, DoesNotCutOffATextAtANul) {
    // Two keys and three texts, one of them long, with a NUL each except for the text "1".
    constexpr std::string_view bytes{"bplist00\xd3\x01\x02\x03\x04\x05\x06_\x10\x0f"
                                     "CFBundleVersion_\x10\x10"
                                     "CFBundleVersion\0TLong"
                                     "T42\0xQ1_\x10\x11"
                                     "444444444444444\0a\x08\x0f!49>@\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x07"
                                     "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0T",
                                     123};
    writeInfo(bytes);
    EXPECT_EQ(dictionary(), (InfoDictionary{{"CFBundleVersion", "42\x1Ax"},
                                            {"CFBundleVersion\x1A", "1"},
                                            {"Long", "444444444444444\x1A"
                                                     "a"}}));
}

TEST_F(ABundle, KeepsAKeyOfUtf16WithANulInABinaryDictionary) {
    constexpr std::string_view bytes{
        "bplist00\xd1\x01\x02\x62\0A\0\0Q1\x08\x0b\x10\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x03"
        "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x12",
        53};
    writeInfo(bytes);
    EXPECT_EQ(dictionary(), (InfoDictionary{{"A\x1A", "1"}}));
}

TEST_F(ABundle, KeepsItsDictionaryWhenTheFileChanges) {
    writeXml("<dict><key>CFBundleVersion</key><string>1</string></dict>");
    const auto read = readBundle(bundle);
    writeXml("<dict><key>CFBundleVersion</key><string>2</string></dict>");
    EXPECT_EQ(*read.infoDictionary(), (InfoDictionary{{"CFBundleVersion", "1"}}));
}

TEST_F(ABundle, NamesItsInfoFileAndItsResources) {
    const auto read = readBundle(bundle);
    EXPECT_EQ(read.infoFile(), infoFile.string());
    EXPECT_EQ(read.resourcePath(), (bundle / "Contents" / "Resources").string());
}

TEST_F(ABundle, SaysThatItsInfoFileIsMissing) {
    EXPECT_EQ(problem(), "there is no such file");
}

TEST_F(ABundle, DoesNotWaitForAPipeInPlaceOfItsInfoFile) {
    ASSERT_EQ(mkfifo(infoFile.c_str(), 0600), 0);
    EXPECT_EQ(problem(), "it is not a file");
}

TEST_F(ABundle, SaysWhyItsInfoFileCannotBeReached) {
    fs::create_symlink("Info.plist", infoFile);
    EXPECT_THAT(problem(), HasSubstr("it cannot be read: Too many levels of symbolic links"));
}

TEST_F(ABundle, SaysThatItsInfoFileIsNotAPropertyList) {
    for (const std::string_view bytes :
         {"", "\n", "CFBundleVersion=2105", "{\"CFBundleVersion\": \"2105\"}", "<html></html>",
          "<plist version=\"1.0\"><dict><key>A</key><string>it breaks off", "bplist00",
          "bplist00\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f\x10\x11\x12\x13\x14\x15\x16\x17\x18"}) {
        writeInfo(bytes);
        EXPECT_EQ(problem(), "it is not a property list") << bytes;
    }
}

TEST_F(ABundle, SaysThatItsPropertyListIsNotADictionary) {
    for (const auto* const body : {"<array><string>CFBundleVersion</string></array>", "<string>2105</string>"}) {
        writeXml(body);
        EXPECT_EQ(problem(), "its property list is not a dictionary") << body;
    }
}

TEST_F(ABundle, NeedsItsOwnFoldersAroundTheExecutable) {
    writeXml("<dict/>");
    for (const auto& executable :
         {bundle / "Contents" / "Driver Manager", bundle / "MacOS" / "Driver Manager", fs::path{"/"}, fs::path{}}) {
        const auto read = readBundleOfExecutable(executable);
        EXPECT_EQ(read.infoDictionary(), nullptr);
        EXPECT_EQ(read.infoProblem(), "the program is not in a bundle");
        EXPECT_THAT(read.infoFile(), Not(IsEmpty()));
    }
}

class TheMainBundle : public testing::Test {
protected:
    /// The first line that a program prints about its main bundle.
    static std::string toldBy(const QString& program) {
        QProcess process;
        process.setWorkingDirectory("/");
        process.start(program, {"bundle"});
        EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
        return process.readAllStandardOutput().trimmed().toStdString();
    }
};

TEST_F(TheMainBundle, IsThatOfTheExecutableEvenThroughALink) {
    const QTemporaryDir folder;
    const auto link = folder.filePath("link");
    ASSERT_TRUE(QFile::link(PROGRAM, link));
    EXPECT_EQ(toldBy(link), "42 of " PROGRAM_BUNDLE "/Contents/Info.plist");
}

} // namespace
} // namespace platform
