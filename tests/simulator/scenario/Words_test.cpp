#include "simulator/scenario/Words.h"

namespace simulator::scenario {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> wordsIn(std::string_view line) {
    const Words words = wordsOf(line).value();
    std::vector<std::string> texts;
    for (const Word& word : words.words)
        texts.push_back(word.text);
    return texts;
}

TEST(TheWordsOfALine, AreDividedByBlanks) {
    EXPECT_THAT(wordsIn("  allow\tcom.kelvra.camera \r"), ElementsAre("allow", "com.kelvra.camera"));
}

TEST(TheWordsOfALine, EndWhereACommentBegins) {
    EXPECT_THAT(wordsIn("restart # and wait"), ElementsAre("restart"));
    EXPECT_THAT(wordsIn("# restart"), IsEmpty());
}

TEST(TheWordsOfALine, MayHoldANumberSignInTheMiddle) {
    EXPECT_THAT(wordsIn("bundle C# \"a # b\""), ElementsAre("bundle", "C#", "a # b"));
}

TEST(TheWordsOfALine, AreOneBetweenQuotes) {
    EXPECT_THAT(wordsIn("quit \"Driver Manager\" \"\""), ElementsAre("quit", "Driver Manager", ""));
}

TEST(TheWordsOfALine, TakeQuotesAndBackslashesInQuotesWithABackslash) {
    EXPECT_THAT(wordsIn(R"("a \"b\" \\ \c")"), ElementsAre(R"(a "b" \ \c)"));
}

TEST(TheWordsOfALine, AreNoneWhereAQuoteIsNotClosed) {
    EXPECT_FALSE(wordsOf("quit \"Driver Manager"));
    EXPECT_FALSE(wordsOf("quit \"Driver Manager\\\""));
}

TEST(TheWordsOfALine, TellAQuotedWordFromAPlainOne) {
    const auto words = wordsOf("as \"as\"").value().words;
    EXPECT_FALSE(words[0].isQuoted);
    EXPECT_TRUE(words[1].isQuoted);
}

TEST(TheWordsOfALine, HaveACommaOfTheirOwnInAList) {
    EXPECT_THAT(wordsIn("2.0/2004 enabled, 2,1/2105 waiting"),
                ElementsAre("2.0/2004", "enabled", ",", "2,1/2105", "waiting"));
}

TEST(TheWordsOfALine, ComeWithTheLineAsItIsWrittenButForTheComment) {
    EXPECT_EQ(wordsOf("  quit  \"Driver # Manager\"  # now").value().text, "quit  \"Driver # Manager\"");
}

} // namespace
} // namespace simulator::scenario
