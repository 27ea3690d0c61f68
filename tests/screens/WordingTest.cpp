#include "screens/Wording.h"

#include "tests/support/QtPrinting.h"

#include <gmock/gmock.h>

namespace palvera {
namespace {

TEST(WordingTest, whatIsWrittenForAMachineIsReadByPeople)
{
    using Words = QString (*)(const QString&);
    const std::tuple<Words, QString, QString> cases[] = {
        {humanised, "picture_master", "Picture master"},
        {humanised, "qc_report", "QC report"},
        {humanised, "IN-PROGRESS", "In progress"},
        {humanised, "final uhd hdrx", "Final UHD hdrx"},
        {humanised, "__a__b_", "A b"},
        {humanised, "_-_", "_-_"},
        {humanised, "", ""},
        {capitalisedWords, "artwork stills", "Artwork Stills"},
        {capitalisedWords, "editor's CUT", "Editor's Cut"},
        {languageName, "ZXX", "Textless"},
        {languageName, "pt-BR", "Portuguese"},
        {languageName, "en_GB", "English"},
        {languageName, "qqq", "qqq"},
        {languageName, "-", "-"},
        {languageName, "C", "C"},
        {familySymbol, "subtitles", "captions.bubble.fill"},
        {familySymbol, "Video", "shippingbox.fill"}, // compared exactly
        {familyTint, "metadata", "indigo"},
        {familyTint, "", "gray"},
    };
    for (const auto& [words, code, text] : cases)
        EXPECT_EQ(words(code), text) << code.toStdString();
}

} // namespace
} // namespace palvera
