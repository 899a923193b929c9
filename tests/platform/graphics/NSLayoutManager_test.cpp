#include "platform/graphics/NSLayoutManager.h"

#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSParagraphStyle.h"
#include "platform/graphics/NSTextContainer.h"
#include "platform/graphics/NSTextStorage.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QImage>
#include <QRawFont>
#include <QtEndian>

#include <map>
#include <random>

namespace
{

constexpr double kRounding = 1.0 / 16.0; // of the shaper, over some glyphs
constexpr double kUnlimited = 1e30;
constexpr double kRoom = 500.0; // for a short text
constexpr std::array kFonts{"Arial", "Arial Bold", "Arial Italic", "No Such Family"};
constexpr const char* kHebrew = "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"; // four letters

double widthOf(const char* string)
{
    return text(string)->sizeWithAttributes({}).width;
}

NSPoint middleOf(NSRect rect)
{
    return {rect.origin.x + rect.size.width / 2.0, rect.origin.y + rect.size.height / 2.0};
}

/// A text system with a text in Arial 12.
struct TextSystem {
    explicit TextSystem(const char* string, double width = kUnlimited, double padding = 0.0)
        : storage(make<NSTextStorage>()->initWithString(text(string).get())), layout(make<NSLayoutManager>()),
          container(make<NSTextContainer>()->initWithContainerSize({width, kUnlimited}))
    {
        container->setLineFragmentPadding(padding);
        layout->addTextContainer(container);
        storage->addLayoutManager(layout);
    }

    NSRange all() const { return {0, storage->length()}; }
    NSRect used() const { return layout->usedRectForTextContainer(container.get()); }
    void set(const NSAttributes::Entry& attribute, NSRange range) const
    {
        storage->addAttribute_value_range(attribute, range);
    }
    void align(NSTextAlignment alignment, NSRange range) const
    {
        const Ref<NSMutableParagraphStyle> style = make<NSMutableParagraphStyle>();
        style->setAlignment(alignment);
        set({NSParagraphStyleAttributeName, Ref<NSParagraphStyle>(style)}, range);
    }
    std::vector<NSRect> rects(NSRange range) const
    {
        return layout->enclosingRectsForGlyphRange_inTextContainer(range, container.get());
    }
    std::size_t at(NSPoint point) const
    {
        return layout->glyphIndexForPoint_inTextContainer(point, container.get());
    }
    std::vector<NSRange> lines() const
    {
        std::vector<NSRange> lines;
        for (NSRange line; lines.empty() || lines.back() != line;) {
            lines.push_back(line);
            layout->lineFragmentRectForGlyphAtIndex_effectiveRange(NSMaxRange(line), &line);
        }
        return {lines.begin() + 1, lines.end()};
    }

    Ref<NSTextStorage> storage;
    Ref<NSLayoutManager> layout;
    Ref<NSTextContainer> container;
};

TEST(NSLayoutManagerTest, BreaksLinesWhereTheTextDoesAndWhereTheWidthEnds)
{
    const struct {
        const char* text;
        double width;
        std::vector<NSRange> lines;
    } cases[] = {
        {"ab ab ab", widthOf("ab ab") + 0.5, {{0, 6}, {6, 2}}},
        {"ab\nab\r\nab\rab\u2029a", kUnlimited, {{0, 3}, {3, 4}, {7, 3}, {10, 3}, {13, 1}}},
        {"ab\u2028a", kUnlimited, {{0, 3}, {3, 1}}},
        {"\n\n", kUnlimited, {{0, 1}, {1, 1}, {2, 0}}},
        {"abab", widthOf("ab") + 0.5, {{0, 2}, {2, 2}}},
        {"ab", -8.0, {{0, 1}, {1, 1}}},
        {"\U0001F600e\u0301", 0.0, {{0, 2}, {2, 2}}},
    };
    for (const auto& [string, width, lines] : cases) {
        const TextSystem system(string, width);
        EXPECT_EQ(system.lines(), lines) << string;
        EXPECT_EQ(system.layout->glyphRangeForTextContainer(system.container.get()), system.all());
    }
    EXPECT_EQ(TextSystem("first narrow", 0.0).lines().size(), 11U);
    EXPECT_EQ(TextSystem("first narrow").lines().size(), 1U) << "each time as wide as there is room";
}

TEST(NSLayoutManagerTest, AlignsParagraphsWithinTheWidthAndThePadding)
{
    using enum NSTextAlignment;
    const double width = widthOf("ab");
    const double hebrew = widthOf(kHebrew);
    const struct {
        NSTextAlignment alignment;
        const char* text;
        double left;
    } cases[] = {
        {Center, "ab", (100.0 - width) / 2.0}, {Right, "ab", 95.0 - width},         {Natural, "ab", 5.0},
        {Natural, kHebrew, 95.0 - hebrew},     {Justified, kHebrew, 95.0 - hebrew}, {Left, kHebrew, 5.0}};
    for (const auto& [alignment, string, left] : cases) {
        const TextSystem system(string, 100.0, 5.0);
        system.align(alignment, system.all());
        EXPECT_NEAR(system.rects(system.all()).at(0).origin.x, left, kRounding) << string;
        EXPECT_NEAR(system.used().origin.x, left - 5.0, kRounding) << "with the padding";
        EXPECT_NEAR(system.used().size.width, widthOf(string) + 10.0, kRounding);
        EXPECT_EQ(system.layout->lineFragmentRectForGlyphAtIndex_effectiveRange(0, nullptr).size.width,
                  100.0);
    }

    const TextSystem justified("ab ab ab", widthOf("ab ab") + 8.0);
    justified.align(Justified, justified.all());
    EXPECT_NEAR(justified.rects({3, 2})[0].origin.x, widthOf("ab ") + 8.0, kRounding)
        << "the gap takes what is left";

    const TextSystem each("ab\nab\nlonger", 100.0);
    each.align(Right, {3, 3});
    EXPECT_NEAR(each.rects({3, 2})[0].origin.x, 100.0 - width, kRounding) << "by its own style";
    EXPECT_EQ(each.rects({6, 2})[0].origin.x, 0.0);
    EXPECT_NEAR(each.used().size.width, 100.0, kRounding);
    each.container->setContainerSize({width / 2.0, kUnlimited});
    EXPECT_EQ(each.rects({3, 1})[0].origin.x, 0.0) << "never left of the container";
    each.container->setContainerSize({kUnlimited, kUnlimited});
    EXPECT_NEAR(each.rects({3, 2})[0].origin.x, widthOf("longer") - width, kRounding)
        << "without a width, within the widest line";
}

TEST(NSLayoutManagerTest, FindsEveryGlyphWhereItSaysItIs)
{
    const std::string both = std::string("one ") + kHebrew + " two";
    for (const char* string : {"one two three four", both.c_str(), kHebrew}) {
        for (const double width : {kUnlimited, widthOf("one two") + 0.5}) {
            const TextSystem system(string, width, 3.0);
            std::size_t places = 0;
            for (std::size_t index = 0; index < system.storage->length(); ++index) {
                for (const NSRect& rect : system.rects({index, 1})) {
                    EXPECT_EQ(system.at(middleOf(rect)), index) << string;
                    ++places;
                }
            }
            const std::size_t wraps = system.lines().size() - 1;
            EXPECT_EQ(places + wraps, system.storage->length()) << "a space where a line is wrapped has none";
        }
    }
    const TextSystem lines("ab\ncd\n");
    EXPECT_EQ(lines.at({-50.0, -50.0}), 0U);
    EXPECT_EQ(lines.at({500.0, 2.0}), 1U) << "the nearest on the line";
    EXPECT_EQ(lines.at({-1e300, 20.0}), 3U);
    EXPECT_EQ(lines.at({5.0, 5000.0}), 6U) << "the empty last line";
    EXPECT_EQ(TextSystem("").at({5.0, 5.0}), 0U);
    EXPECT_EQ(TextSystem("ae\u0301\U0001F600").at({1e300, 5.0}), 3U) << "where the last character begins";
}

TEST(NSLayoutManagerTest, CoversARangeWithOneRectanglePerLineAndDirection)
{
    const TextSystem wrapped("one two three", widthOf("one two ") + 0.5);
    const std::vector<NSRect> rects = wrapped.rects({4, 7});
    ASSERT_EQ(rects.size(), 2U);
    EXPECT_NEAR(rects[0].origin.x, widthOf("one "), kRounding);
    EXPECT_EQ(rects[1].origin.y, rects[0].size.height);
    EXPECT_NEAR(rects[1].size.width, widthOf("thr"), kRounding);
    EXPECT_EQ(wrapped.layout->boundingRectForGlyphRange_inTextContainer({4, 7}, wrapped.container.get()),
              NSUnionRect(rects[0], rects[1]));
    EXPECT_TRUE(wrapped.rects({5, 0}).empty() && wrapped.rects({90, 8}).empty());

    const TextSystem both((std::string("ab ") + kHebrew).c_str());
    EXPECT_EQ(both.rects({1, 4}).size(), 2U) << "b and two letters at the far end";
    EXPECT_EQ(both.rects(both.all()).size(), 1U);
    EXPECT_EQ(TextSystem("a\nb").rects({1, 1}).size(), 0U) << "a line end takes no room";
    EXPECT_NEAR(TextSystem("a\tb").rects({1, 1}).at(0).size.width, 28.0 - widthOf("a"), kRounding);
}

TEST(NSLayoutManagerTest, WidensRangesToWholeCharacters)
{
    const TextSystem system("a\U0001F600e\u0301\r\nb"); // a, two units, two units, two units, b
    constexpr std::pair<NSRange, NSRange> kCases[] = {
        {{2, 1}, {1, 2}}, {{0, 2}, {0, 3}},          {{3, 1}, {3, 2}}, {{5, 1}, {5, 2}},
        {{6, 2}, {5, 3}}, {{6, NSNotFound}, {5, 3}}, {{90, 5}, {8, 0}}};
    for (const auto& [range, widened] : kCases) {
        NSRange actual;
        EXPECT_EQ(system.layout->glyphRangeForCharacterRange_actualCharacterRange(range, &actual), widened);
        EXPECT_EQ(actual, widened);
    }
}

TEST(NSLayoutManagerTest, FollowsItsStorageAndContainer)
{
    TextSystem system("one two", 1000.0);
    EXPECT_EQ(system.lines().size(), 1U);
    system.container->setContainerSize({widthOf("one") + 0.5, kUnlimited});
    EXPECT_EQ(system.lines().size(), 2U);
    const double height = system.used().size.height;
    system.set({NSFontAttributeName, NSFont::fontWithName_size("Arial", 6.0)}, system.all());
    EXPECT_NEAR(system.used().size.height, height / 2.0, kRounding) << "two lines of half the size";
    system.storage->setAttributedString(make<NSAttributedString>()->initWithString(text("x\ny\nz").get()));
    EXPECT_EQ(system.lines().size(), 3U);

    system.container->setContainerSize({100.0, height});
    EXPECT_EQ(system.layout->glyphRangeForTextContainer(system.container.get()), (NSRange{0, 4}));
    EXPECT_EQ(system.used().size.height, height) << "what is beyond the height is not laid out";
    EXPECT_TRUE(system.rects({4, 1}).empty());
    EXPECT_EQ(system.at({1.0, 1000.0}), 2U);

    const Ref<NSTextStorage> other = make<NSTextStorage>()->initWithString(text("other").get());
    other->addLayoutManager(system.layout);
    EXPECT_TRUE(system.storage->layoutManagers().empty());
    EXPECT_EQ(system.layout->textStorage(), other.get());
    system.storage->addLayoutManager(system.layout);
    system.storage = nullptr;
    EXPECT_EQ(system.layout->textStorage(), nullptr);
    EXPECT_EQ(system.layout->numberOfGlyphs(), 0U);
}

TEST(NSLayoutManagerTest, SetsSeveralFontsOnOneBaseline)
{
    const TextSystem system("AAA");
    const auto setSize = [&](std::size_t index, double size) {
        system.set({NSFontAttributeName, NSFont::fontWithName_size("Arial", size)}, {index, 1});
    };
    setSize(1, 24.5);
    setSize(2, 7.25);
    EXPECT_NEAR(system.rects({1, 1})[0].size.width, widthOf("A") / 12.0 * 24.5, kRounding);
    EXPECT_NEAR(system.rects({2, 1})[0].size.width, widthOf("A") / 12.0 * 7.25, kRounding);
    setSize(0, 4000.0);
    EXPECT_NEAR(system.used().size.height, (1854.0 + 434.0) / 2048.0 * 4000.0, 1.0);
}

TEST(NSLayoutManagerTest, DrawsGlyphsDownwardsFromAPointInTheirColours)
{
    // Blocks, so that a pixel in the middle tells.
    const TextSystem system("\u2588\u2588\n\u2588\u2588", kUnlimited, 5.0);
    system.set({NSFontAttributeName, NSFont::fontWithName_size("Liberation Sans", 20.0)}, system.all());
    system.set({NSForegroundColorAttributeName, NSColor::grayColor()}, {1, 1});
    for (const bool flipped : {true, false}) {
        for (const NSRange drawn : {system.all(), NSRange{1, 3}, NSRange{4, 1}}) {
            const Ref<Canvas> canvas = make<Canvas>(NSSize{100.0, 100.0}, flipped, [&] {
                system.layout->drawGlyphsForGlyphRange_atPoint(drawn, {10.0, flipped ? 20.0 : 80.0});
            });
            const Ref<NSImage> picture = canvas->imageOfBounds(1.0);
            for (const std::size_t index : {0U, 1U, 3U, 4U}) {
                const NSPoint middle = middleOf(system.rects({index, 1}).at(0));
                const bool inside = index >= drawn.location && index < NSMaxRange(drawn);
                const char* color = index == 1 ? "#ff808080" : "#ff000000";
                EXPECT_EQ(
                    pixel(*picture, static_cast<int>(10.0 + middle.x), static_cast<int>(20.0 + middle.y)),
                    inside ? color : "#00000000")
                    << flipped << ' ' << drawn.location << ' ' << index;
            }
            EXPECT_NE(operationsOf(*canvas).at(0).find(
                          "] [{1, 1} font \"Liberation Sans\" 20 color white(0.5, 1)] [{2, 3} "),
                      std::string::npos);
        }
    }
}

TEST(NSLayoutManagerTest, UnderlinesWhatIsUnderlined)
{
    const TextSystem system("      "); // nothing but the line shows
    system.set({NSForegroundColorAttributeName, NSColor::grayColor()}, system.all());
    system.set({NSUnderlineStyleAttributeName, NSNumber::numberWithInteger(NSUnderlineStyleSingle)}, {2, 3});
    const NSRect underlined = system.rects({2, 3}).at(0);
    for (const double y : {0.0, 0.3, 0.6}) {
        const Ref<Canvas> canvas = make<Canvas>(NSSize{30.0, 20.0}, true, [&] {
            system.layout->drawGlyphsForGlyphRange_atPoint(system.all(), {0.0, y});
        });
        const Ref<NSImage> picture = canvas->imageOfBounds(1.0);
        const QRect ink = inkOf(pixelsOf(*picture));
        EXPECT_EQ(ink.height(), 1) << "one sharp line";
        EXPECT_TRUE(ink.top() >= 11 && ink.top() <= 13) << "below the baseline";
        EXPECT_NEAR(ink.left(), underlined.origin.x, 1.0);
        EXPECT_NEAR(ink.width(), underlined.size.width, 1.0);
        EXPECT_EQ(pixel(*picture, ink.left(), ink.top()), "#ff808080");
    }
}

QByteArray bigEndian(std::initializer_list<int> numbers)
{
    QByteArray bytes;
    for (const int number : numbers) {
        const auto value = qToBigEndian(static_cast<quint16>(number));
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return bytes;
}

/// The file of a font "Ruled Sans": "Liberation Sans" with rules of its own. In texts with letters, 1, 2 and
/// 3 in a row become a W, 8 and 9 an O, and 4 before 5 and 6 becomes an M.
QByteArray fontWithRules()
{
    const QRawFont base = QRawFont::fromFont(QFont("Liberation Sans"));
    const auto glyph = [&](char16_t character) {
        return static_cast<int>(base.glyphIndexesForString(QChar(character)).at(0));
    };
    std::map<QByteArray, QByteArray> tables;
    for (const char* tag : {"OS/2", "cmap", "glyf", "head", "hhea", "hmtx", "loca", "maxp", "GPOS"}) {
        tables[tag] = base.fontTable(tag);
    }
    tables["name"] = bigEndian({0, 1, 18, 3, 1, 0x409, 1, 20, 0, //
                                'R', 'u', 'l', 'e', 'd', ' ', 'S', 'a', 'n', 's'});
    // Offsets count from the beginnings of the lists and rules that they are in.
    tables["GSUB"] =
        bigEndian({1, 0, 10, 48, 76}) +                                     //
        bigEndian({2, 0x4446, 0x4C54, 28, 0x6C61, 0x746E, 14}) +            // "DFLT", "latn"
        bigEndian({4, 0, 0, 0xFFFF, 2, 0, 1, 4, 0, 0, 0xFFFF, 0}) +         // both features, none
        bigEndian({2, 0x6361, 0x6C74, 14, 0x6C69, 0x6761, 20}) +            // "calt", "liga"
        bigEndian({0, 1, 0, 0, 2, 1, 2}) +                                  // their rules
        bigEndian({4, 10, 52, 86, 118}) +                                   //
        bigEndian({5, 0, 1, 8, 3, 3, 1, 16, 22, 28, 0, 3}) +                // in a context, the last rule
        bigEndian({1, 1, glyph('4'), 1, 1, glyph('5'), 1, 1, glyph('6')}) + //
        bigEndian({4, 0, 1, 8, 1, 20, 1, 8, 1, 4, glyph('W'), 3, glyph('2'), glyph('3'), 1, 1, glyph('1')}) +
        bigEndian({4, 0, 1, 8, 1, 18, 1, 8, 1, 4, glyph('O'), 2, glyph('9'), 1, 1, glyph('8')}) +
        bigEndian({1, 0, 1, 8, 1, 6, glyph('M') - glyph('4'), 1, 1, glyph('4')});

    const auto count = static_cast<int>(tables.size());
    QByteArray head = bigEndian({1, 0, count, 0, 0, 0});
    QByteArray content;
    for (const auto& [tag, table] : tables) {
        const auto offset = static_cast<int>(12 + 16 * count + content.size());
        const auto size = static_cast<int>(table.size());
        head += tag + bigEndian({0, 0, offset >> 16, offset, size >> 16, size});
        content += table + QByteArray((4 - size % 4) % 4, 0);
    }
    return head + content;
}

/// Plain texts are set and wrapped from what is known of pairs of characters, others, such as those with a
/// line separator, by the shaper: expects that a text comes out the same by itself and behind a separator.
void expectPairsLikeShaper(const QString& string, const Ref<NSFont>& font, NSTextAlignment alignment,
                           double width)
{
    SCOPED_TRACE(utf8(font->fontName()) + ' ' + std::to_string(font->pointSize()) + " '" +
                 string.toStdString() + "' in " + std::to_string(width));
    constexpr double kPartsOfPixel = 1024.0;
    struct Setting {
        std::vector<NSRange> lines;
        std::vector<NSRect> rects;
        std::vector<QImage> pictures;
    };
    const auto settingOf = [&](const QString& before) {
        const TextSystem system((before + string).toUtf8().constData(), width);
        system.set({NSFontAttributeName, font}, system.all());
        system.align(alignment, system.all());
        const auto start = static_cast<std::size_t>(before.size());
        const NSRange shown{start, system.storage->length() - start};
        Setting setting;
        std::size_t behind = start; // the lines so far
        do {
            NSRange line;
            setting.rects.push_back(
                system.layout->lineFragmentUsedRectForGlyphAtIndex_effectiveRange(behind, &line));
            setting.lines.push_back({line.location - start, line.length});
            const NSPoint behindIt{width, middleOf(setting.rects.back()).y};
            setting.lines.push_back({system.at(behindIt) - start, 0});
            behind = NSMaxRange(line);
        } while (behind < system.storage->length());
        const double top = setting.rects.front().origin.y;
        for (const NSRange range : {shown, NSRange{start, 1}, NSRange{start + 1, 2}}) {
            const Ref<Canvas> canvas = make<Canvas>(NSSize{width, 60.0}, true, [&] {
                system.layout->drawGlyphsForGlyphRange_atPoint(range, {0.0, 4.0 - top});
            });
            setting.pictures.push_back(pixelsOf(*canvas->imageOfBounds(2.0)));
        }
        const std::vector<NSRect> all = system.rects(shown);
        setting.rects.insert(setting.rects.end(), all.begin(), all.end());
        for (std::size_t index = start; index < system.storage->length(); ++index) {
            for (const NSRect& rect : system.rects({index, 1})) {
                EXPECT_EQ(system.at(middleOf(rect)), index);
                setting.rects.push_back(rect);
            }
        }
        for (NSRect& rect : setting.rects) {
            rect.origin.y = std::round((rect.origin.y - top) * kPartsOfPixel) / kPartsOfPixel;
        }
        return setting;
    };
    const Setting pairs = settingOf(QString());
    const Setting shaper = settingOf(QChar(QChar::LineSeparator));
    EXPECT_EQ(pairs.lines, shaper.lines);
    EXPECT_EQ(pairs.rects, shaper.rects);
    EXPECT_EQ(pairs.pictures, shaper.pictures);
}

TEST(NSLayoutManagerTest, SetsPlainTextFromPairsAsTheShaperDoes)
{
    constexpr std::array kAlignments{NSTextAlignment::Natural, NSTextAlignment::Center,
                                     NSTextAlignment::Right};
    constexpr std::array kPieces{"AV", "To", "11", "fi", "ffl", "P.", "  ", "- "};
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
    for (int count = 0; count < 300; ++count) {
        QString string;
        const bool letters = random() % 3U != 0; // other texts are in another script
        for (auto length = random() % 12U; length > 0; --length) {
            if (random() % 3U == 0) {
                string += QLatin1String(letters ? kPieces.at(random() % kPieces.size()) : "11");
            } else {
                string += QChar(static_cast<char16_t>(0x20U + random() % (letters ? 0xE0U : 0x21U)));
            }
        }
        const double size = 8.0 + static_cast<double>(random() % 16U) / 2.0;
        const Ref<NSFont> font = NSFont::fontWithName_size(kFonts.at(random() % kFonts.size()), size);
        const NSTextAlignment alignment = kAlignments.at(random() % kAlignments.size());
        expectPairsLikeShaper(string, font, alignment, kRoom);
    }
}

TEST(NSLayoutManagerTest, WrapsPlainTextFromPairsAsTheShaperDoes)
{
    constexpr std::array kAlignments{NSTextAlignment::Natural, NSTextAlignment::Center,
                                     NSTextAlignment::Right, NSTextAlignment::Justified};
    constexpr std::u16string_view kUsual = u"AVTfWPaefilrty 1147.,'(";
    constexpr std::array kNumbers{"8:30", "1!1111", "ae.1111", "1,111.11"}; // some can be broken
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
    for (int count = 0; count < 300; ++count) {
        QString string;
        const bool letters = random() % 5U != 0;
        const auto unusual = 6U + random() % 200U; // one in so many characters
        for (auto words = 2U + random() % 12U; words > 0; --words) {
            for (auto length = 1U + random() % 8U; length > 0; --length) {
                const bool usual = random() % unusual != 0;
                const auto any = static_cast<char16_t>(0x20U + random() % (letters ? 0xE0U : 0x21U));
                string += usual && letters ? QChar(kUsual[random() % kUsual.size()]) : usual ? u'1' : any;
            }
            if (random() % 4U == 0) {
                string += QLatin1String(kNumbers.at(random() % kNumbers.size()));
            }
            string += random() % 6U != 0 ? u" " : u"  ";
        }
        string += random() % 8U != 0 ? u"." : u"";
        const double size = 8.0 + static_cast<double>(random() % 16U) / 2.0;
        const Ref<NSFont> font = NSFont::fontWithName_size(kFonts.at(random() % kFonts.size()), size);
        const NSTextAlignment alignment = kAlignments.at(random() % kAlignments.size());
        const double width = 30.0 + static_cast<double>(random() % 4000U) / 16.0;
        expectPairsLikeShaper(string, font, alignment, width);
    }
}

TEST(NSLayoutManagerTest, LeavesToTheShaperWhatFontsHaveRulesFor)
{
    const int fontId = QFontDatabase::addApplicationFontFromData(fontWithRules());
    const Ref<NSFont> font = NSFont::fontWithName_size("Ruled Sans", 12.0);
    ASSERT_EQ(text("x89")->sizeWithAttributes({{NSFontAttributeName, font}}),
              text("xO")->sizeWithAttributes({{NSFontAttributeName, font}}));
    for (const char* string : {"x89", "89", "x123", "123", "x456", "456", "4x56", "12 x34 98"}) {
        expectPairsLikeShaper(string, font, NSTextAlignment::Natural, kRoom);
    }
    QFontDatabase::removeApplicationFont(fontId);
}

} // namespace
