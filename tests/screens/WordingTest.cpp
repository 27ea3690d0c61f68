#include "screens/Wording.h"

#include "tests/support/QtPrinting.h"

#include <gmock/gmock.h>

#include <limits>

namespace palvera {
namespace {

TEST(WordingTest, codesReadAsWords)
{
    const std::vector<std::pair<QString, QString>> cases = {{"picture_master", "Picture master"},
                                                            {"qc_report", "QC report"},
                                                            {"IN-PROGRESS", "In progress"},
                                                            {"final uhd hdr", "Final UHD HDR"},
                                                            {"Ocr_Sdh cc", "OCR SDH CC"},
                                                            {"__a__b_", "A b"},
                                                            {"_-_", "_-_"},
                                                            {"", ""},
                                                            {"hdrx", "Hdrx"}};
    for (const auto& [code, words] : cases)
        EXPECT_EQ(humanised(code), words);
    EXPECT_EQ(capitalisedWords("artwork stills"), "Artwork Stills");
    EXPECT_EQ(capitalisedWords("editor's CUT"), "Editor's Cut");
}

TEST(WordingTest, languagesAreCalledByTheirNames)
{
    const std::vector<std::pair<QString, QString>> cases = {{"zxx", "Textless"},
                                                            {"ZXX", "Textless"},
                                                            {"fr", "French"},
                                                            {"pt-BR", "Portuguese"},
                                                            {"es-419", "Spanish"},
                                                            {"en_GB", "English"},
                                                            {"qqq", "qqq"},
                                                            {"-", "-"},
                                                            {"", ""},
                                                            {"C", "C"}};
    for (const auto& [code, name] : cases)
        EXPECT_EQ(languageName(code), name);
}

TEST(WordingTest, familiesHaveSymbolsAndTints)
{
    EXPECT_EQ(familySymbol("subtitles"), "captions.bubble.fill");
    EXPECT_EQ(familyTint("metadata"), "indigo");
    EXPECT_EQ(familySymbol("Video"), "shippingbox.fill") << "compared exactly";
    EXPECT_EQ(familyTint(""), "gray");
}

} // namespace
} // namespace palvera
