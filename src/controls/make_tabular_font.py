"""Makes, of a font whose digits have different widths, one whose digits all have the same: those that it keeps for tables
take the place of the others. Qt 6.4 has no way to ask for them. It has the characters of what the program itself says,
in every language that it speaks; others are of the font that is given. Usage: make_tabular_font.py FONT FAMILY OUTPUT
"""
import sys

from fontTools.subset import Options, Subsetter
from fontTools.ttLib import TTFont

SPOKEN = *range(0x20, 0x180), *range(0x2000, 0x2070), 0x20AC, 0x2212 # Latin, its punctuation, the euro and minus


def tabular_glyphs(font):
    """What stands for each glyph in tables."""
    table = font["GSUB"].table
    features = [record.Feature for record in table.FeatureList.FeatureRecord if record.FeatureTag == "tnum"]
    subtables = [subtable for index in features[0].LookupListIndex for subtable in table.LookupList.Lookup[index].SubTable]
    return {glyph: other for subtable in subtables for glyph, other in subtable.mapping.items()}


def main():
    source, family, output = sys.argv[1:]
    font = TTFont(source)
    instead = tabular_glyphs(font)
    for table in font["cmap"].tables:
        if table.isUnicode():
            for code in range(ord("0"), ord("9") + 1):
                glyph = table.cmap[code] # tables may share what they hold
                table.cmap[code] = instead.get(glyph, glyph)
    for record in font["name"].names:
        if record.nameID in (1, 4, 6, 16): # family, full name, PostScript name, typographic family
            name = family.replace(" ", "") if record.nameID == 6 else family
            font["name"].setName(name, record.nameID, record.platformID, record.platEncID, record.langID)
    subsetter = Subsetter(Options(name_IDs=["*"]))
    subsetter.populate(unicodes=SPOKEN)
    subsetter.subset(font)
    font.save(output)


main()
