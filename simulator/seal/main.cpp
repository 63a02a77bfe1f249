#include "simulator/disk/Seal.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

// Seals a bundle: writes down whose it is, what it may do and what its files are, where the simulator looks for it.
// Extensions are sealed before the application that holds them.

namespace {

constexpr int badUsage = 2;
constexpr int failed = 1;

int complain(int code, const QString& problem) {
    QTextStream{stderr} << "seal: " << problem << "\n";
    return code;
}

/// "key" is true; "key=value" is a list of every value that is given for the key.
simulator::PropertyList::Dictionary entitlementsFrom(const QStringList& arguments) {
    std::map<std::string, simulator::PropertyList::Array> lists;
    simulator::PropertyList::Dictionary entitlements;
    for (const QString& argument : arguments) {
        const qsizetype equals = argument.indexOf('=');
        if (equals < 0) {
            entitlements[argument.toStdString()] = true;
        } else {
            lists[argument.left(equals).toStdString()].push_back(argument.mid(equals + 1).toStdString());
        }
    }
    for (const auto& [key, values] : lists)
        entitlements[key] = values;
    return entitlements;
}

int sealBundle(const QString& bundle, const QString& team, const QStringList& entitlements) {
    const QString contents = QString::fromStdString(simulator::contentsOf(bundle.toStdString()));
    if (!QFileInfo{contents + "/Info.plist"}.isFile()) return complain(failed, bundle + ": not a bundle");
    auto files = simulator::digestsOf(bundle.toStdString());
    if (!files) return complain(failed, bundle + ": a file cannot be read");
    const simulator::Seal seal{team.toStdString(), entitlementsFrom(entitlements), std::move(*files)};
    const std::string problem = simulator::writeSeal(bundle.toStdString(), seal);
    return problem.empty() ? 0 : complain(failed, bundle + ": " + QString::fromStdString(problem));
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application{argc, argv};
    QCommandLineParser parser;
    const QCommandLineOption team{"team", "Whose bundle it is.", "team"};
    const QCommandLineOption entitlement{"entitlement", "What it may do; may be given several times.", "key[=value]"};
    parser.setApplicationDescription("Seals a bundle for the simulator.");
    parser.addHelpOption();
    parser.addOptions({team, entitlement});
    parser.addPositionalArgument("bundle", "The bundle's folder.");
    parser.process(application);
    if (parser.positionalArguments().size() != 1 || !parser.isSet(team)) {
        return complain(badUsage, "usage: seal BUNDLE --team TEAM [--entitlement KEY[=VALUE]]...");
    }
    return sealBundle(parser.positionalArguments().first(), parser.value(team), parser.values(entitlement));
}
