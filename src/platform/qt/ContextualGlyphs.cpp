#include "platform/qt/ContextualGlyphs.h"

#include <QByteArray>
#include <QRawFont>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace
{

constexpr std::size_t kGlyphs = 0x10000; // that a font can have

/// Rules in other languages than the one that is read here.
constexpr std::array kForeignTables{"morx", "mort", "kerx", "Silf"};

/// Features that are on unless they are switched off, and those that cannot be.
constexpr std::array<std::string_view, 16> kUsualFeatures{"abvm", "blwm", "calt", "ccmp", "clig", "curs",
                                                          "dist", "kern", "liga", "locl", "mark", "mkmk",
                                                          "rclt", "rlig", "rvrn", " RQD"};

/// The kinds of rules, by the numbers that they have in the two tables.
struct Kinds {
    std::size_t ligature;
    std::size_t pair;
    std::size_t cursive;
    std::size_t context;
    std::size_t chainedContext;
    std::size_t reverseContext;
    std::size_t extension;
};
constexpr std::size_t kNone = 0x10000; // is no number of a kind
constexpr Kinds kSubstitution{4, kNone, kNone, 5, 6, 8, 7};
constexpr Kinds kPositioning{kNone, 2, 3, 7, 8, kNone, 9};

/// One of a font's two tables of rules.
class Rules
{
public:
    Rules(const QRawFont& font, const char* table, const Kinds& kinds)
        : _bytes(font.fontTable(table)), _kinds(kinds)
    {
    }

    void markContextual(std::vector<bool>& glyphs) const
    {
        const std::size_t features = number(6);
        const std::size_t lookups = number(8);
        for (std::size_t index = 0; index < number(features); ++index) {
            const std::size_t record = features + 2 + 6 * index;
            const std::string tag = _bytes.mid(static_cast<qsizetype>(record), 4).toStdString();
            if (std::ranges::find(kUsualFeatures, tag) == kUsualFeatures.end()) {
                continue;
            }
            const std::size_t feature = features + number(record + 4);
            for (std::size_t rule = 0; rule < number(feature + 2); ++rule) {
                const std::size_t lookup = number(feature + 4 + 2 * rule);
                markContextualIn(lookups + number(lookups + 2 + 2 * lookup), glyphs);
            }
        }
    }

private:
    /// Two bytes of the table; 0 behind its end.
    std::size_t number(std::size_t offset) const
    {
        const bool inside = offset + 2 <= static_cast<std::size_t>(_bytes.size());
        return inside ? qFromBigEndian<quint16>(_bytes.constData() + offset) : 0;
    }

    void markContextualIn(std::size_t lookup, std::vector<bool>& glyphs) const
    {
        for (std::size_t index = 0; index < number(lookup + 4); ++index) {
            std::size_t kind = number(lookup);
            std::size_t part = lookup + number(lookup + 6 + 2 * index);
            if (kind == _kinds.extension) {
                kind = number(part + 2);
                part += (number(part + 4) << 16) + number(part + 6);
            }
            if (looksFar(kind, part)) {
                mark(part + number(coverageOffset(kind, part)), glyphs);
            }
        }
    }

    bool looksFar(std::size_t kind, std::size_t part) const
    {
        return (kind == _kinds.ligature && hasLongLigature(part)) ||
               (kind == _kinds.pair && number(part + 6) != 0) || // moves the second glyph, too
               kind == _kinds.cursive || kind == _kinds.context || kind == _kinds.chainedContext ||
               kind == _kinds.reverseContext;
    }

    /// Whether there is a ligature of more than two glyphs.
    bool hasLongLigature(std::size_t part) const
    {
        for (std::size_t index = 0; index < number(part + 4); ++index) {
            const std::size_t set = part + number(part + 6 + 2 * index);
            for (std::size_t ligature = 0; ligature < number(set); ++ligature) {
                if (number(set + number(set + 2 + 2 * ligature) + 2) > 2) {
                    return true;
                }
            }
        }
        return false;
    }

    /// Where it says at which glyphs a rule begins.
    std::size_t coverageOffset(std::size_t kind, std::size_t part) const
    {
        constexpr std::size_t kByCoverage = 3; // a format of contexts
        if (number(part) == kByCoverage && kind == _kinds.context) {
            return part + 6;
        }
        if (number(part) == kByCoverage && kind == _kinds.chainedContext) {
            return part + 6 + 2 * number(part + 2);
        }
        return part + 2;
    }

    void mark(std::size_t coverage, std::vector<bool>& glyphs) const
    {
        constexpr std::size_t kByRanges = 2;
        const bool ranges = number(coverage) == kByRanges;
        for (std::size_t index = 0; index < number(coverage + 2); ++index) {
            const std::size_t entry = coverage + 4 + (ranges ? 6 : 2) * index;
            const std::size_t last = number(ranges ? entry + 2 : entry);
            for (std::size_t glyph = number(entry); glyph <= last; ++glyph) {
                glyphs[glyph] = true;
            }
        }
    }

    QByteArray _bytes;
    const Kinds& _kinds;
};

} // namespace

std::vector<bool> contextualGlyphs(const QRawFont& font)
{
    const bool foreign = std::ranges::any_of(
        kForeignTables, [&](const char* table) { return !font.fontTable(table).isEmpty(); });
    std::vector<bool> glyphs(kGlyphs, foreign);
    Rules(font, "GSUB", kSubstitution).markContextual(glyphs);
    Rules(font, "GPOS", kPositioning).markContextual(glyphs);
    return glyphs;
}
