// What lies on the disk: applications, and the extensions in them.

#include "simulator/scenario/Reading.h"
#include "simulator/scenario/SampleApplication.h"

#include <utility>

namespace simulator::scenario {

namespace {

constexpr std::string_view categoryPrefix = "com.apple.system_extension.";

std::string takePath(Line& line) {
    std::string path = line.take("a path");
    if (path.empty() || path.front() != '/' || path.back() == '/')
        line.fail("\"" + path + "\" is not an absolute path");
    return path;
}

Action readBundle(Reading& reading) {
    Line& line = reading.line;
    const std::string name = line.take("a name");
    BundleOnDisk bundle{"/Applications/" + name + ".app", "com.example." + name, sampleTeam, true, {}};
    while (!line.isAtEnd()) {
        if (line.takes("at")) {
            bundle.path = takePath(line);
        } else if (line.takes("identifier")) {
            bundle.identifier = line.take("an identifier");
        } else if (line.takes("team")) {
            bundle.team = line.take("a team");
        } else {
            line.mustTake("without");
            line.mustTake("entitlement");
            bundle.mayInstallExtensions = false;
        }
    }
    reading.applications.insert(name);
    return PutApplication{name, std::move(bundle)};
}

std::optional<Category> takeCategory(Line& line) {
    std::vector<std::string> known;
    for (const CategoryRow& row : categories) {
        if (row.category != Category::driver) known.emplace_back(row.name.substr(categoryPrefix.size()));
    }
    known.emplace_back("unknown");
    return categoryNamed(std::string{categoryPrefix} + line.takeOneOf("a category", known));
}

void readLack(Line& line, Carry& carry) {
    const std::string lack = line.takeOneOf("what may be lacking", {"identifier", "usage-description", "seal"});
    if (lack == "identifier") {
        carry.extension.identifier.clear();
    } else if (lack == "usage-description") {
        carry.extension.hasUsageDescription = false;
    } else {
        carry.isSealed = false;
        carry.extension.sealMatches = false;
    }
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

void readTrait(Line& line, Carry& carry) {
    if (line.takes("without")) {
        readLack(line, carry);
    } else if (line.takes("damaged")) {
        carry.extension.sealMatches = false;
    } else if (line.takes("identifier")) {
        carry.extension.identifier = line.take("an identifier");
    } else if (line.takes("category")) {
        if (!endsWith(carry.extension.fileName, ".systemextension"))
            line.fail("only a .systemextension has a category");
        carry.extension.category = takeCategory(line);
    } else if (line.takes("service")) {
        carry.extension.machServiceName = line.take("a service name");
    } else {
        line.mustTake("team");
        carry.extension.team = line.take("a team");
    }
}

Action readCarry(Reading& reading) {
    Line& line = reading.line;
    const std::string fileName = line.take("an extension's file name");
    if (fileName.rfind('.') == std::string::npos || fileName.find('/') != std::string::npos) {
        line.fail("\"" + fileName + "\" is not an extension's file name");
    }
    Carry carry{{}, extensionNamed(fileName, line.takeVersion()), true};
    carry.application = takeApplicationAfter("in", reading);
    while (!line.isAtEnd())
        readTrait(line, carry);
    return carry;
}

Action readUpdate(Reading& reading) {
    std::string application = takeApplication(reading);
    reading.line.mustTake("to");
    return Update{std::move(application), reading.line.takeVersion()};
}

Action readMove(Reading& reading) {
    std::string application = takeApplication(reading);
    reading.line.mustTake("to");
    return Move{std::move(application), takePath(reading.line)};
}

Action readDamage(Reading& reading) {
    std::string fileName = reading.line.take("an extension's file name");
    return Damage{takeApplicationAfter("in", reading), std::move(fileName)};
}

} // namespace

const std::vector<Verb>& verbsOfTheDisk() {
    static const std::vector<Verb> verbs{
        {"bundle", "NAME [at PATH] [identifier ID] [team TEAM] [without entitlement]", readBundle},
        {"carry",
         "FILE SHORT/BUILD [in NAME] [damaged] [without LACK] [identifier ID] [category CATEGORY] [service S] [team "
         "TEAM]",
         readCarry},
        {"update", "NAME to SHORT/BUILD", readUpdate},
        {"move", "NAME to PATH", readMove},
        {"damage", "FILE [in NAME]", readDamage},
    };
    return verbs;
}

} // namespace simulator::scenario
