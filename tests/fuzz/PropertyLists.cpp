#include "platform/linux/BundleReader.h"
#include "simulator/disk/PropertyList.h"
#include "simulator/disk/RealDisk.h"
#include "tests/fuzz/Bytes.h"

#include <QTemporaryDir>

#include <fstream>

// Property lists, as the application and the simulator read them, and profiles.

namespace {

void readAsTheApplicationsOwn(const std::string& bytes) {
    static const QTemporaryDir folder;
    static const std::filesystem::path bundle{folder.path().toStdString()};
    std::filesystem::create_directories(bundle / "Contents");
    std::ofstream{bundle / "Contents/Info.plist", std::ios::binary} << bytes;
    const auto read = platform::readBundle(bundle);
    tests::must((read.infoDictionary() == nullptr) != read.infoProblem().empty(), "a bundle has both or neither");
}

} // namespace

void tests::fuzz(Bytes bytes) {
    const std::string list = bytes.takeRest();
    readAsTheApplicationsOwn(list);
    if (const auto read = simulator::PropertyList::parse(list)) {
        const std::string written = read->toXml();
        const auto again = simulator::PropertyList::parse(written);
        must(again && again->toXml() == written, "a list is another one when written");
    }
    const auto profile = simulator::readProfile(list);
    const auto* const policy = std::get_if<simulator::Profile>(&profile);
    must(!policy || policy->source == list, "a profile forgets what it was read from");
}
