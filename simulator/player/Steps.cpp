#include "simulator/player/Scenario.h"

#include <algorithm>
#include <utility>

namespace simulator::player {

namespace {

// What lies on the disk ----------------------------------------------------------------------------------------------

constexpr std::string_view categoryPrefix = "com.apple.system_extension.";

std::string takePath(Words& words) {
    const std::string path = words.take("a path");
    const bool isAbsolute = !path.empty() && path.front() == '/' && path.back() != '/';
    if (!isAbsolute) words.fail(inQuotes(path) + " is not an absolute path");
    return path;
}

Play bundle(Reading& reading) {
    Words& words = reading.words;
    const std::string name = words.take("a name");
    BundleOnDisk bundle{"/Applications/" + name + ".app", "com.example." + name, sampleTeam, true, {}};
    while (!words.isAtEnd()) {
        if (words.takes("at")) {
            bundle.path = takePath(words);
        } else if (words.takes("identifier")) {
            bundle.identifier = words.take("an identifier");
        } else if (words.takes("team")) {
            bundle.team = words.take("a team");
        } else {
            words.mustTake("without");
            words.mustTake("entitlement");
            bundle.mayInstallExtensions = false;
        }
    }
    reading.applications.insert(name);
    return [=](Mac& mac) { mac.put(name, bundle); };
}

std::optional<Category> takeCategory(Words& words) {
    WordList known;
    for (const CategoryRow& row : categories)
        if (row.category != Category::driver) known.emplace_back(row.name.substr(categoryPrefix.size()));
    known.emplace_back("unknown");
    return categoryNamed(std::string{categoryPrefix} + words.takeOneOf("a category", known));
}

/// Returns whether it is still sealed.
bool readLack(Words& words, ExtensionOnDisk& extension) {
    const std::string lack = words.takeOneOf("a lack", {"identifier", "usage-description", "seal"});
    if (lack == "identifier") extension.identifier.clear();
    if (lack == "usage-description") extension.hasUsageDescription = false;
    if (lack == "seal") extension.sealMatches = false;
    return lack != "seal";
}

void readTrait(Words& words, ExtensionOnDisk& extension) {
    if (words.takes("damaged")) {
        extension.sealMatches = false;
    } else if (words.takes("identifier")) {
        extension.identifier = words.take("an identifier");
    } else if (words.takes("category")) {
        if (suffixOf(extension.fileName) != ".systemextension") words.fail("only a .systemextension has a category");
        extension.category = takeCategory(words);
    } else if (words.takes("service")) {
        extension.machServiceName = words.take("a service name");
    } else {
        words.mustTake("team");
        extension.team = words.take("a team");
    }
}

/// Changes the application as it is now.
template <typename Change>
Play changing(const std::string& application, Change change) {
    return [=](Mac& mac) {
        BundleOnDisk bundle = mac.bundleOf(application);
        change(bundle);
        mac.put(application, bundle);
    };
}

Play carryExtension(Reading& reading) {
    Words& words = reading.words;
    const std::string fileName = words.take("an extension file name");
    const bool isFileName = fileName.rfind('.') != std::string::npos && fileName.find('/') == std::string::npos;
    if (!isFileName) words.fail(inQuotes(fileName) + " is not an extension file name");
    ExtensionOnDisk extension = extensionNamed(fileName, takeVersion(words));
    const std::string application = takeApplicationAfter("in", reading);
    bool isSealed = true;
    while (!words.isAtEnd()) {
        if (words.takes("without"))
            isSealed = readLack(words, extension) && isSealed;
        else
            readTrait(words, extension);
    }
    return changing(application, [=](BundleOnDisk& bundle) { carry(bundle, extension, isSealed); });
}

Play update(Reading& reading) {
    const std::string application = takeApplication(reading);
    reading.words.mustTake("to");
    return changing(application, [version = takeVersion(reading.words)](BundleOnDisk& bundle) {
        for (ExtensionOnDisk& extension : bundle.extensions)
            extension.version = version;
    });
}

Play move(Reading& reading) {
    const std::string application = takeApplication(reading);
    reading.words.mustTake("to");
    return changing(application, [path = takePath(reading.words)](BundleOnDisk& bundle) { bundle.path = path; });
}

Play damage(Reading& reading) {
    const std::string fileName = reading.words.take("an extension file name");
    const std::string application = takeApplicationAfter("in", reading);
    return changing(application, [=](BundleOnDisk& bundle) {
        auto& all = bundle.extensions;
        const auto found =
            std::find_if(all.begin(), all.end(), [&](const auto& extension) { return extension.fileName == fileName; });
        if (found == all.end()) throw NotDone{application + " carries no " + fileName};
        found->sealMatches = false;
    });
}

// What applications do -----------------------------------------------------------------------------------------------

std::optional<bool> takeReply(Words& words) {
    const std::string reply = words.takeOneOf("an answer", {"replace", "cancel", "later"});
    return reply == "later" ? std::nullopt : std::optional{reply == "replace"};
}

template <RequestKind kind>
Play ask(Reading& reading) {
    Words& words = reading.words;
    Ask ask;
    ask.kind = kind;
    ask.identifier = words.take("an extension identifier");
    const std::string application = takeApplicationAfter("as", reading);
    ask.request = words.takes("called") ? words.take("a request's name") : ask.identifier;
    if (kind == RequestKind::activation && words.takes("answering")) ask.replace = takeReply(words);
    return [=](Mac& mac) { mac.ask(application, ask); };
}

Play answer(Reading& reading) {
    const std::string request = reading.words.take("a request's name");
    const bool replace = reading.words.takeOneOf("an answer", {"replace", "cancel"}) == "replace";
    const std::string application = takeApplicationAfter("as", reading);
    return [=](Mac& mac) { mac.answer(application, request, replace); };
}

Play quit(Reading& reading) {
    return [application = takeApplication(reading)](Mac& mac) { mac.quit(application); };
}

template <void (Mac::*deed)()>
Play ofTheCommand(Reading&) {
    return [](Mac& mac) { (mac.*deed)(); };
}

} // namespace

const std::vector<LineVerb>& lineVerbs() {
    static const std::vector<LineVerb> verbs{
        {"bundle", "NAME [at PATH] [identifier ID] [team TEAM] [without entitlement]", bundle},
        {"carry",
         "FILE SHORT/BUILD [in NAME] [damaged] [without LACK] [identifier ID] [category CATEGORY] [service S] [team "
         "TEAM]",
         carryExtension},
        {"update", "NAME to SHORT/BUILD", update},
        {"move", "NAME to PATH", move},
        {"damage", "FILE [in NAME]", damage},
        {"activate", "ID [as NAME] [called REQUEST] [answering replace|cancel|later]", ask<RequestKind::activation>},
        {"deactivate", "ID [as NAME] [called REQUEST]", ask<RequestKind::deactivation>},
        {"properties", "ID [as NAME] [called REQUEST]", ask<RequestKind::properties>},
        {"answer", "REQUEST replace|cancel [as NAME]", answer},
        {"quit", "NAME", quit},
        {"start", "", ofTheCommand<&Mac::startCommand>},
        {"stop", "", ofTheCommand<&Mac::stopCommand>},
        {"expect", "WHAT ...", readExpectation},
    };
    return verbs;
}

std::string takeApplication(Reading& reading) {
    const std::string name = reading.words.take("an application's name");
    const WordList known{reading.applications.begin(), reading.applications.end()};
    if (reading.applications.count(name) == 0) reading.words.reject("an application", name, known);
    return name;
}

std::string takeApplicationAfter(std::string_view word, Reading& reading) {
    return reading.words.takes(word) ? takeApplication(reading) : sampleName;
}

Version takeVersion(Words& words) {
    const std::string word = words.take("a version");
    const auto slash = word.find('/');
    if (slash == std::string::npos) words.fail(inQuotes(word) + " is not a version; an example is 2.1/2105");
    return {word.substr(0, slash), word.substr(slash + 1)};
}

} // namespace simulator::player
