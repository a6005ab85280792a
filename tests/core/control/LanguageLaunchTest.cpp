#include "control/LanguageLaunch.h"

#include <gtest/gtest.h>

namespace zd {
namespace {

using Env = std::vector<std::pair<std::string, std::string>>;

TEST(LanguageLaunch, AppleArgumentsCarryTheCodeAsGivenParenthesisedThenBare) {
    const auto settings = LanguageLaunch::appleArguments("zh-Hans");
    EXPECT_EQ(settings.arguments, (std::vector<std::string>{"-AppleLanguages", "(zh-Hans)",
                                                            "-AppleLocale", "zh-Hans"}));
    EXPECT_TRUE(settings.environment.empty());
}

struct LocaleCase {
    const char* code;
    const char* locale;
    const char* language;
};
void PrintTo(const LocaleCase& c, std::ostream* os) {
    *os << c.code;
}

class PosixLocale : public ::testing::TestWithParam<LocaleCase> {};

TEST_P(PosixLocale, CodeBecomesLocaleVariables) {
    const auto& c = GetParam();
    EXPECT_EQ(LanguageLaunch::posixLocaleName(c.code), c.locale);
    const auto settings = LanguageLaunch::posixEnvironment(c.code);
    EXPECT_TRUE(settings.arguments.empty());
    EXPECT_EQ(settings.environment,
              (Env{{"LC_ALL", c.locale}, {"LANGUAGE", c.language}, {"LANG", c.locale}}));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Codes, PosixLocale, ::testing::Values(
    LocaleCase{"de", "de_DE.UTF-8", "de:de_DE"}, LocaleCase{"ja", "ja_JP.UTF-8", "ja:ja_JP"},
    LocaleCase{"en-GB", "en_GB.UTF-8", "en_GB"}, LocaleCase{"pt-PT", "pt_PT.UTF-8", "pt_PT"},
    LocaleCase{"EN-gb", "en_GB.UTF-8", "EN_gb:en_GB"}, LocaleCase{"zh-Hans", "zh_CN.UTF-8",
               "zh_Hans:zh_CN"},
    LocaleCase{"zh-Hant", "zh_TW.UTF-8", "zh_Hant:zh_TW"}, LocaleCase{"zh-Hant-HK", "zh_HK.UTF-8",
               "zh_Hant_HK:zh_HK"},
    LocaleCase{"es-419", "es_419.UTF-8", "es_419"}, LocaleCase{"xx", "xx_XX.UTF-8", "xx:xx_XX"}));
// clang-format on

TEST(LanguageLaunch, TextThatIsNoLanguageCodeGivesNoVariables) {
    for (const char* bad : {"", "x", "1234", "de;rm -rf", "abcd", "-de"}) {
        EXPECT_EQ(LanguageLaunch::posixLocaleName(bad), "") << bad;
        EXPECT_TRUE(LanguageLaunch::posixEnvironment(bad).environment.empty()) << bad;
    }
}

}  // namespace
}  // namespace zd
