#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "token.h"

#include "tamarok/error.h"

namespace tamarok::tsql {
namespace {

using testing::ElementsAre;

/// The tokens before the final End, each as "offset:text".
std::vector<std::string> cut(std::string_view text)
{
    std::vector<std::string> parts;
    for (const Token& token : tokenize(SourceText(text))) {
        if (token.kind == TokenKind::End) continue;
        parts.push_back(std::to_string(token.offset) + ":" + std::string(text.substr(token.offset, token.length)));
    }
    return parts;
}

std::vector<TokenKind> kindsOf(std::string_view text)
{
    std::vector<TokenKind> kinds;
    for (const Token& token : tokenize(SourceText(text)))
        kinds.push_back(token.kind);
    return kinds;
}

std::string refusal(std::string_view text)
{
    try {
        static_cast<void>(tokenize(SourceText(text)));
    } catch (const Error& error) {
        EXPECT_EQ(error.number, errors::statementRefused);
        return std::to_string(error.nativeError) + " " + error.description;
    }
    return "accepted";
}

TEST(Lexer, TokensHaveOffsetAndLength)
{
    EXPECT_THAT(cut("SELECT A.[B C],'d''e' FROM T"),
                ElementsAre("0:SELECT", "7:A", "8:.", "9:[B C]", "14:,", "15:'d''e'", "22:FROM", "27:T"));
    EXPECT_THAT(cut("x<>1.5e-3"), ElementsAre("0:x", "1:<>", "3:1.5e-3"));
    EXPECT_THAT(cut("é=N'ä'"), ElementsAre("0:é", "2:=", "3:N'ä'"));
}

TEST(Lexer, CommentsAndBlanksAreSkipped)
{
    EXPECT_THAT(cut(" a -- b\n/* c /* nested */ */ d"), ElementsAre("1:a", "29:d"));
    EXPECT_THAT(kindsOf(" \t\r\n"), ElementsAre(TokenKind::End));
}

TEST(Lexer, NumbersAreWholeDecimalOrFloat)
{
    EXPECT_THAT(kindsOf("1 1. .5 1.5 1e3 1.5E+3 0x1F"),
                ElementsAre(TokenKind::Integer, TokenKind::Decimal, TokenKind::Decimal, TokenKind::Decimal,
                            TokenKind::Float, TokenKind::Float, TokenKind::Hex, TokenKind::End));
    EXPECT_THAT(cut("1e"), ElementsAre("0:1", "1:e"));
}

TEST(Lexer, NamesVariablesAndParametersDiffer)
{
    EXPECT_THAT(kindsOf("a #t \"q\" [b] @v @@ROWCOUNT ?"),
                ElementsAre(TokenKind::Name, TokenKind::Name, TokenKind::QuotedName, TokenKind::QuotedName,
                            TokenKind::Variable, TokenKind::SystemVariable, TokenKind::Parameter, TokenKind::End));
}

TEST(Lexer, OperatorsTakeTheLongestForm)
{
    EXPECT_THAT(kindsOf("<= >= <> != !< !> || | < >"),
                ElementsAre(TokenKind::LessEqual, TokenKind::GreaterEqual, TokenKind::NotEqual, TokenKind::NotEqual,
                            TokenKind::GreaterEqual, TokenKind::LessEqual, TokenKind::BarBar, TokenKind::Bar,
                            TokenKind::Less, TokenKind::Greater, TokenKind::End));
}

TEST(Lexer, GoSeparatesBatchesOnlyAloneOnItsLine)
{
    EXPECT_EQ(tokenize(SourceText("a\n go \nb"))[1].kind, TokenKind::Go);
    EXPECT_EQ(tokenize(SourceText("go b"))[0].kind, TokenKind::Name);
}

TEST(Lexer, KeywordsAreFoundWithoutRegardToCase)
{
    EXPECT_EQ(tokenize(SourceText("sElEcT"))[0].keyword, Keyword::Select);
    EXPECT_EQ(tokenize(SourceText("SELECTED"))[0].keyword, Keyword::None);
    EXPECT_EQ(tokenize(SourceText("[SELECT]"))[0].keyword, Keyword::None);
    for (int i = 1; i <= static_cast<int>(Keyword::Work); ++i) {
        const auto keyword = static_cast<Keyword>(i);
        EXPECT_EQ(findKeyword(keywordText(keyword)), keyword);
    }
    EXPECT_TRUE(isReserved(Keyword::Select));
    EXPECT_FALSE(isReserved(Keyword::Cast));
    EXPECT_FALSE(isReserved(Keyword::None));
}

TEST(Lexer, ErrorsNameLineAndColumn)
{
    EXPECT_EQ(refusal("SELECT\n  'abc"),
              "105 Unclosed quotation mark after the character string 'abc'. (line 2, column 3)");
    EXPECT_EQ(refusal("a /* b"), "113 Missing end comment mark '*/'. (line 1, column 3)");
    EXPECT_EQ(refusal("äö []"), "1038 An object or column name is missing or empty. (line 1, column 4)");
    EXPECT_EQ(refusal("a !"), "102 Incorrect syntax near '!'. (line 1, column 3)");
    EXPECT_EQ(refusal("a\xFF"),
              "102 Incorrect syntax: the text holds the byte 0xFF, which is no character. (line 1, column 2)");
}

} // namespace
} // namespace tamarok::tsql
