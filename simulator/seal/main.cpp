#include "simulator/disk/Seal.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

// Seals a bundle: writes down whose it is, what it may do and what its files are, where the simulator looks for it.
// Extensions are sealed before the application that holds them.

namespace {

using simulator::PropertyList;

constexpr int badUsage = 2;
constexpr int failed = 1;

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
    parser.setApplicationDescription("Seals a bundle for the simulator.");
    parser.addHelpOption();
    parser.addOptions({{"team", "Whose bundle it is.", "team"},
                       {"entitlement", "What it may do; may be given several times.", "key[=value]"}});
    parser.addPositionalArgument("bundle", "The bundle's folder.");
    parser.process(application);
    const QStringList bundles = parser.positionalArguments();
    if (bundles.size() != 1 || !parser.isSet("team")) {
        return complain(badUsage, "usage: seal BUNDLE --team TEAM [--entitlement KEY[=VALUE]]...");
    }
    return sealBundle(bundles.first(), parser.value("team"), parser.values("entitlement"));
}
