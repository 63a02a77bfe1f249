#include "simulator/player/Mac.h"

#include <algorithm>
#include <utility>

namespace simulator::player {

namespace {

void giveTeam(ExtensionOnDisk& extension, const std::string& team) {
    if (extension.team.empty()) extension.team = team;
    if (extension.category != Category::camera || !extension.machServiceName.empty()) return;
    extension.machServiceName = extension.team + "." + stemOf(extension.fileName);
    extension.applicationGroups = {stemOf(extension.machServiceName)};
}

} // namespace

// The sample application ---------------------------------------------------------------------------------------------

ExtensionOnDisk extensionNamed(const std::string& fileName, const Version& version, const std::string& name) {
    ExtensionOnDisk extension;
    extension.fileName = fileName;
    extension.identifier = stemOf(fileName);
    extension.version = version;
    extension.name = name.empty() ? extension.identifier : name;
    if (suffixOf(fileName) == ".dext") extension.category = Category::driver;
    if (suffixOf(fileName) == ".systemextension") extension.category = Category::camera;
    extension.hasUsageDescription = true;
    extension.sealMatches = true;
    return extension;
}

void carry(BundleOnDisk& bundle, ExtensionOnDisk extension, bool isSealed) {
    if (isSealed) giveTeam(extension, bundle.team);
    auto& all = bundle.extensions;
    std::erase_if(all, [&](const ExtensionOnDisk& other) { return other.fileName == extension.fileName; });
    all.push_back(std::move(extension));
    std::sort(all.begin(), all.end(),
              [](const ExtensionOnDisk& left, const ExtensionOnDisk& right) { return left.fileName < right.fileName; });
}

BundleOnDisk sampleApplication() {
    BundleOnDisk bundle{
        std::string{"/Applications/"} + sampleName + ".app", "com.kelvra.driver-manager", sampleTeam, true, {}};
    const Version version{"2.1", "2105"};
    carry(bundle, extensionNamed("com.kelvra.driverkit.base.dext", version, "Base"));
    carry(bundle, extensionNamed("com.kelvra.driverkit.usb-to-poe.dext", version, "Network"));
    carry(bundle, extensionNamed("com.kelvra.ip-camera.cmio.systemextension", version, "Camera"));
    return bundle;
}

// Applications -------------------------------------------------------------------------------------------------------

void Mac::put(const std::string& application, const BundleOnDisk& bundle) {
    const bool isThere = applications_.count(application) > 0;
    if (isThere) {
        quit(application);
        remove(bundleOf(application));
    }
    applications_[application].bundle = bundle;
    write(bundle);
    rest();
}

WordList Mac::applications() const {
    WordList names;
    for (const auto& [name, application] : applications_)
        names.push_back(name);
    return names;
}

void Mac::ask(const std::string& application, const Ask& ask) {
    Application& asking = applications_.at(application);
    if (asking.client.empty()) asking.client = start(application);
    const std::string token = std::to_string(++lastToken_);
    asking.asked[token] = ask;
    submit(application, token, ask);
    rest();
}

void Mac::answer(const std::string& application, const std::string& request, bool replace) {
    const auto question = applications_.at(application).questions.extract(request);
    if (question.empty()) throw NotDone{"no question about " + request + " is open"};
    reply(application, question.mapped(), replace);
    rest();
}

void Mac::tell(const std::string& application, const std::string& token, const std::string& text) {
    Application& listener = applications_.at(application);
    const Ask& ask = listener.asked.at(token);
    listener.heard.push_back({ask.request, text});
    listener.questions.erase(ask.request);
    if (text.rfind("asked ", 0) != 0) return;
    if (ask.replace)
        reply(application, token, *ask.replace);
    else
        listener.questions[ask.request] = token;
}

void Mac::quit(const std::string& application) {
    stop(application);
    rest();
}

void Mac::stop(const std::string& application) {
    Application& running = applications_.at(application);
    if (running.client.empty()) return;
    end(application);
    running.client.clear();
    running.questions.clear();
}

std::optional<Heard> Mac::hear(const std::string& application) {
    auto& heard = applications_.at(application).heard;
    if (heard.empty()) return std::nullopt;
    Heard oldest = heard.front();
    heard.pop_front();
    return oldest;
}

// The person and the machine -----------------------------------------------------------------------------------------

void Mac::perform(const Saying& saying) {
    const bool isRestart = saying.words.front().text == "restart";
    if (isRestart) stopCommand();
    act(saying);
    if (isRestart)
        for (const std::string& application : applications())
            stop(application);
    rest();
}

} // namespace simulator::player
