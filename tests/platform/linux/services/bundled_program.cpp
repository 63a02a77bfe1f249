#include "platform/Bundle.h"

#include <cstdio>

// Says what it finds as its main bundle.

int main() {
    const auto& bundle = platform::NSBundle::mainBundle();
    const auto* const dictionary = bundle.infoDictionary();
    if (dictionary == nullptr) return 1;
    const std::string version = dictionary->at("CFBundleVersion").value_or("no text");
    std::printf("%s of %s\n", version.c_str(), bundle.infoFile().c_str());
}
