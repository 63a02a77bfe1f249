#include "simulator/disk/Seal.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

namespace {

using simulator::PropertyList;

constexpr int badUsage = 2;
constexpr int failed = 1;

constexpr auto usage = "usage: seal BUNDLE --team TEAM [--entitlement KEY[=VALUE]]...";
constexpr auto help = R"(usage: seal BUNDLE --team TEAM [--entitlement KEY[=VALUE]]...

Seals a bundle: writes the file in which the simulator finds its team, its entitlements, and the checksums of its files.
Seal the extensions first, then the application that contains them, and again after each change.
  --team         the identifier of the team that signs it
  --entitlement  what it may do: KEY alone is true, and the values of one KEY are a list
Example: seal Meter.app --team EXAMPLE001 --entitlement com.apple.developer.system-extension.install
Ends with 0 if the bundle is sealed, 1 if not, and 2 if an argument is unknown or missing.
)";

int complain(int code, const QString& problem) {
    QTextStream{stderr} << "seal: " << problem << "\n";
    return code;
}

/// "key" is true; "key=value" is a list of every value that is given for the key.
PropertyList::Dictionary entitlementsFrom(const QStringList& arguments) {
    std::map<std::string, PropertyList::Array> lists;
    PropertyList::Dictionary entitlements;
    for (const QString& argument : arguments) {
        const std::string key = argument.section('=', 0, 0).toStdString();
        if (argument.contains('=')) lists[key].push_back(argument.section('=', 1).toStdString());
        entitlements[key] = lists.count(key) == 0 ? PropertyList{true} : PropertyList{lists[key]};
    }
    return entitlements;
}

int sealBundle(const QString& path, const QString& team, const QStringList& entitlements) {
    const std::string bundle = path.toStdString();
    const QString info = QString::fromStdString(simulator::contentsOf(bundle) + "/Info.plist");
    if (!QFileInfo{info}.isFile()) return complain(failed, path + ": not a bundle");
    const auto files = simulator::digestsOf(bundle);
    if (!files) return complain(failed, path + ": a file cannot be read");
    const simulator::Seal seal{team.toStdString(), entitlementsFrom(entitlements), *files};
    const std::string problem = simulator::writeSeal(bundle, seal);
    return problem.empty() ? 0 : complain(failed, path + ": " + QString::fromStdString(problem));
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application{argc, argv};
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({{"team", {}, "team"}, {"entitlement", {}, "key[=value]"}});
    const bool isUnderstood = parser.parse(application.arguments());
    if (isUnderstood && parser.isSet("help")) {
        QTextStream{stdout} << help;
        return 0;
    }
    const QStringList bundles = parser.positionalArguments();
    if (!isUnderstood) return complain(badUsage, parser.errorText());
    if (bundles.size() != 1 || !parser.isSet("team")) return complain(badUsage, usage);
    return sealBundle(bundles.first(), parser.value("team"), parser.values("entitlement"));
}
