#include "screens/Wording.h"

#include "files/SourcePath.h"
#include "screens/LocalPath.h"
#include "tests/support/QtPrinting.h"

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

TEST(LocalPath, isOfThisComputerAndByteForByte)
{
    const std::pair<QByteArray, QByteArray> cases[] = {
        {"file:///films/M%C3%A4ster%20%231%2525.mov", "/films/Mäster #1%25.mov"},
        {"file:///films/Reel%FF%20a%E4.mov", "/films/Reel\xff a\xe4.mov"},
        {"file://" + QSysInfo::machineHostName().toUtf8() + "/a.mov", "/a.mov"},
        {"file://elsewhere.example/a.mov", ""},
        {"https://films.example/a.mov", ""},
        {"smb://films.example/a.mov", ""},
        {"", ""}};
    for (const auto& [address, path] : cases)
        EXPECT_EQ(pathToBytes(localPath(QUrl::fromEncoded(address))), path) << address.constData();
}

} // namespace
} // namespace palvera
