#include "platform/qt/PictureFile.h"

#include "platform/foundation/NSData.h"

#include <QImageReader>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <span>
#include <string_view>

namespace
{

constexpr int kMostPictures = 256;
constexpr std::uint64_t kBitsPerByte = 8;

/// The bytes of a file. What lies beyond the end reads as 0; a check of the place tells it from a 0.
class Bytes
{
public:
    explicit Bytes(std::span<const std::byte> bytes) : _bytes(bytes) {}

    std::uint64_t size() const { return _bytes.size(); }
    bool has(std::uint64_t offset, std::uint64_t length) const
    {
        return offset <= size() && length <= size() - offset;
    }

    std::uint64_t little(std::uint64_t offset, unsigned length) const
    {
        std::uint64_t value = 0;
        for (unsigned i = length; i-- > 0;) {
            value = value << kBitsPerByte | at(offset + i);
        }
        return value;
    }
    std::uint64_t big(std::uint64_t offset, unsigned length) const
    {
        std::uint64_t value = 0;
        for (unsigned i = 0; i < length; ++i) {
            value = value << kBitsPerByte | at(offset + i);
        }
        return value;
    }
    unsigned at(std::uint64_t offset) const
    {
        return has(offset, 1) ? std::to_integer<unsigned>(_bytes[offset]) : 0;
    }

    /// '?' stands for any byte.
    bool beginsWith(std::string_view pattern) const
    {
        return has(0, pattern.size()) &&
               std::ranges::equal(pattern, _bytes.first(pattern.size()), [](char expected, std::byte actual) {
                   return expected == '?' || std::byte(expected) == actual;
               });
    }

private:
    std::span<const std::byte> _bytes;
};

/// Chunks up to the last.
bool isWholePng(const Bytes& file)
{
    constexpr std::uint64_t kSignature = 8;
    constexpr std::uint64_t kChunkOverhead = 12; // length, type and check sum
    constexpr std::uint64_t kEnd = 0x49454E44;   // IEND
    for (std::uint64_t offset = kSignature; file.has(offset, kChunkOverhead);) {
        const std::uint64_t length = kChunkOverhead + file.big(offset, 4);
        if (file.big(offset + 4, 4) == kEnd) {
            return file.has(offset, length);
        }
        offset += length;
    }
    return false;
}

/// Leaves the text out of a whole file: nobody reads it, and the reader would unpack all of it.
void dropPngText(QByteArray& png)
{
    constexpr std::uint64_t kSignature = 8;
    constexpr std::uint64_t kChunkOverhead = 12;
    constexpr std::array<std::uint64_t, 3> kText{0x74455874, 0x7A545874, 0x69545874}; // tEXt, zTXt, iTXt
    const Bytes file(std::as_bytes(std::span(png)));
    QByteArray rest = png.first(kSignature);
    for (std::uint64_t offset = kSignature; file.has(offset, kChunkOverhead);) {
        const std::uint64_t length = std::min(kChunkOverhead + file.big(offset, 4), file.size() - offset);
        if (std::ranges::find(kText, file.big(offset + 4, 4)) == kText.end()) {
            rest.append(png.constData() + offset, static_cast<qsizetype>(length));
        }
        offset += length;
    }
    png = rest;
}

/// The same for the PNG files in an icon. Wherever they are, their text turns into chunks of a kind that
/// the reader steps over.
void hidePngText(QByteArray& icon)
{
    for (const char* text : {"tEXt", "zTXt", "iTXt"}) {
        icon.replace(text, "noNe");
    }
}

/// Segments up to the pixels, more between the scans of these, and an end. One bit at least stands for
/// each block of 32 by 32 pixels, the largest there is; arithmetic codes could do with less for a plain
/// picture, which is refused. What is between segments is stepped over.
bool isWholeJpeg(const Bytes& file)
{
    constexpr unsigned kEndOfImage = 0xD9;
    constexpr unsigned kStartOfScan = 0xDA;
    constexpr std::uint64_t kPixelsPerByte = kBitsPerByte * 32 * 32;
    constexpr int kMostScans = 256;                  // each goes over all pixels, however little is in it
    const auto isFrameHeader = [](unsigned marker) { // with Huffman codes or arithmetic ones
        return (marker >= 0xC0 && marker <= 0xC2) || marker == 0xC9 || marker == 0xCA;
    };
    const auto standsAlone = [](unsigned marker) { // a stuffed 0, a restart, or fill
        return marker == 0x00 || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8) || marker == 0xFF;
    };
    std::uint64_t pixels = 0;
    std::uint64_t scanned = 0;
    bool inScan = false;
    int scans = 0;
    for (std::uint64_t offset = 2; file.has(offset, 2);) {
        const unsigned marker = file.at(offset + 1);
        if (file.at(offset) != 0xFF || standsAlone(marker)) {
            offset += file.at(offset) == 0xFF && marker != 0xFF ? 2 : 1;
            scanned += inScan ? 1 : 0;
            continue;
        }
        if (marker == kEndOfImage) {
            return scanned > 0 && pixels <= scanned * kPixelsPerByte;
        }
        const std::uint64_t length = file.big(offset + 2, 2);
        if (length < 2 || !file.has(offset + 2, length)) {
            return false;
        }
        if (isFrameHeader(marker)) {
            pixels = file.big(offset + 5, 2) * file.big(offset + 7, 2);
        }
        inScan = marker == kStartOfScan;
        if (inScan && ++scans > kMostScans) {
            return false;
        }
        offset += 2 + length;
    }
    return false;
}

/// Blocks up to the trailer. A code of three bits or more stands for 4096 pixels at most.
bool isWholeGif(const Bytes& file)
{
    constexpr std::uint64_t kHeader = 13;
    constexpr unsigned kExtension = 0x21;
    constexpr unsigned kFrame = 0x2C;
    constexpr unsigned kTrailer = 0x3B;
    constexpr std::uint64_t kMostPixelsPerByte = kBitsPerByte * 4096 / 3 + 1;
    const auto colourTable = [&](std::uint64_t flags) {
        constexpr unsigned kPresent = 0x80;
        constexpr unsigned kSize = 0x07;
        return (file.at(flags) & kPresent) == 0 ? 0U : 3U << ((file.at(flags) & kSize) + 1);
    };
    std::uint64_t offset = kHeader + colourTable(10);
    while (file.has(offset, 1)) {
        const unsigned block = file.at(offset);
        if (block == kTrailer) {
            return true;
        }
        std::uint64_t pixels = 0;
        if (block == kFrame) {
            pixels = file.little(offset + 5, 2) * file.little(offset + 7, 2);
            offset += 11 + colourTable(offset + 9); // descriptor and the least width of a code
        } else if (block == kExtension) {
            offset += 2;
        } else if (block != 0) { // a stray end of a block is stepped over
            return false;
        }
        std::uint64_t codes = 0;
        while (file.at(offset) != 0) {
            codes += file.at(offset);
            offset += 1 + file.at(offset);
        }
        if (!file.has(offset, 1) || pixels > codes * kMostPixelsPerByte) {
            return false;
        }
        ++offset;
    }
    return false;
}

/// The pixels are there: as many bytes as the size needs, the last row without its padding; or for
/// compressed ones as the header tells, else all up to the mark of their end.
bool isWholeBmp(const Bytes& file)
{
    const auto bytesOf = [](std::uint64_t bitsOfRow, std::uint64_t rows) {
        return rows == 0 ? 0 : (bitsOfRow + 31) / 32 * 4 * (rows - 1) + (bitsOfRow + 7) / 8;
    };
    constexpr std::uint64_t kSmallHeader = 12;
    // Numbers beyond these are taken for these, so that products fit. No such picture is decoded.
    constexpr std::uint64_t kMostSide = 1 << 24;
    constexpr std::uint64_t kMostDepth = 1 << 6;
    constexpr std::uint64_t kHeader = 54;
    const std::uint64_t pixels = file.little(10, 4);
    if (file.little(14, 4) == kSmallHeader) {
        const std::uint64_t needed = bytesOf(file.little(18, 2) * file.little(24, 2), file.little(20, 2));
        return needed > 0 && file.has(pixels, needed);
    }
    const auto extent = [&](std::uint64_t offset) { // a negative height counts from the top
        const auto side = static_cast<std::int32_t>(file.little(offset, 4));
        return std::min(static_cast<std::uint64_t>(std::abs(std::int64_t{side})), kMostSide);
    };
    constexpr std::array<std::uint64_t, 2> kRunLengths{1, 2};
    const bool isCompressed = std::ranges::find(kRunLengths, file.little(30, 4)) != kRunLengths.end();
    constexpr std::uint64_t kEndOfRuns = 1;
    const std::uint64_t told = file.little(34, 4);
    if (isCompressed && told == 0) {
        return file.has(pixels, 2) && file.big(file.size() - 2, 2) == kEndOfRuns;
    }
    const std::uint64_t needed =
        isCompressed ? told : bytesOf(extent(18) * std::min(file.little(28, 2), kMostDepth), extent(22));
    return file.has(0, kHeader) && needed > 0 && file.has(pixels, needed);
}

/// Gives the last row its padding, which the reader wants.
void padBmp(QByteArray& bmp)
{
    bmp.append(3, '\0');
}

/// A directory of a TIFF file, in the byte order of the file.
class TiffDirectory
{
public:
    enum Tag {
        Width = 256,
        Length = 257,
        BitsPerSample = 258,
        Compression = 259,
        StripOffsets = 273,
        SamplesPerPixel = 277,
        StripByteCounts = 279,
        TileWidth = 322,
        TileLength = 323,
        TileOffsets = 324,
        TileByteCounts = 325,
    };

    explicit TiffDirectory(const Bytes& file)
        : _file(file), _isLittle(file.at(0) == 'I'), _offset(number(4, 4))
    {
    }

    /// Whether there is one here; after the last there is none.
    bool exists() const { return _offset != 0; }
    bool isWhole() const { return number(_offset, 2) <= kMostEntries && _file.has(end(), 4); }
    /// Whether it is one of something else than pixels.
    bool isEmpty() const { return !find(StripOffsets).exist && !find(TileOffsets).exist; }
    std::uint64_t countOfParts() const { return find(StripOffsets).count + find(TileOffsets).count; }
    void goToNext() { _offset = number(end(), 4); }

    /// Readers make room for a whole part: a strip, which is the picture at most, or a tile, which may be
    /// larger.
    bool fits() const
    {
        constexpr auto kMost = static_cast<double>(kMostPictureBytes);
        return bytes(Width, Length) <= kMost && bytes(TileWidth, TileLength) <= kMost;
    }

    /// Whether the parts that the picture is stored in are there, each with something in it.
    bool hasPixels() const
    {
        const bool isTiled = find(TileOffsets).exist;
        const Values starts = find(isTiled ? TileOffsets : StripOffsets);
        const Values sizes = find(isTiled ? TileByteCounts : StripByteCounts);
        if (!sizes.exist && starts.count == 1 && value(Compression, 1.0) == 1.0) {
            return _file.has(number(starts.offset, starts.width),
                             static_cast<std::uint64_t>(bytes(Width, Length)));
        }
        for (std::uint64_t i = 0; i < starts.count && starts.count == sizes.count; ++i) {
            const std::uint64_t length = number(sizes.offset + i * sizes.width, sizes.width);
            if (length == 0 || !_file.has(number(starts.offset + i * starts.width, starts.width), length)) {
                return false;
            }
        }
        return starts.count > 0 && starts.count == sizes.count;
    }

private:
    struct Values {
        bool exist = false;
        std::uint64_t offset = 0;
        std::uint64_t count = 0;
        unsigned width = 0;
    };

    static constexpr unsigned kEntryBytes = 12;
    static constexpr unsigned kMostEntries = 1024;

    std::uint64_t number(std::uint64_t offset, unsigned width) const
    {
        return _isLittle ? _file.little(offset, width) : _file.big(offset, width);
    }
    std::uint64_t end() const { return _offset + 2 + kEntryBytes * number(_offset, 2); }

    /// Where the values of a tag are; no number of them if they are not all in the file.
    Values find(Tag tag) const
    {
        for (std::uint64_t entry = _offset + 2; entry < end(); entry += kEntryBytes) {
            if (number(entry, 2) != tag) {
                continue;
            }
            constexpr std::uint64_t kShort = 3;
            constexpr std::uint64_t kLong = 4;
            const std::uint64_t type = number(entry + 2, 2);
            const std::uint64_t count = number(entry + 4, 4);
            const unsigned width = type == kShort ? 2 : 4;
            const std::uint64_t offset = width * count <= 4 ? entry + 8 : number(entry + 8, 4);
            const bool isThere = (type == kShort || type == kLong) && _file.has(offset, width * count);
            return isThere ? Values{true, offset, count, width} : Values{true};
        }
        return {};
    }

    /// The first value of a tag; infinite if it cannot be told.
    double value(Tag tag, double otherwise) const
    {
        const Values values = find(tag);
        if (!values.exist) {
            return otherwise;
        }
        return values.count == 0 ? std::numeric_limits<double>::infinity()
                                 : static_cast<double>(number(values.offset, values.width));
    }

    /// What a picture or tile takes decoded, in its own depth.
    double bytes(Tag width, Tag length) const
    {
        const double bits = value(SamplesPerPixel, 1.0) * value(BitsPerSample, 1.0);
        return value(length, 0.0) * std::ceil(value(width, 0.0) * bits / 8.0);
    }

    const Bytes& _file;
    bool _isLittle;
    std::uint64_t _offset;
};

/// Pages, and directories of something else behind them. Many may share one long list of parts, which
/// readers would go through for each.
bool isWholeTiff(const Bytes& file)
{
    TiffDirectory directory(file);
    std::uint64_t parts = 0;
    int pages = 0;
    for (; directory.exists() && pages < kMostPictures; ++pages) {
        parts += directory.countOfParts();
        if (!directory.isWhole() || parts > file.size() || !directory.fits() ||
            !(directory.hasPixels() || (pages > 0 && directory.isEmpty()))) {
            return false;
        }
        directory.goToNext();
    }
    return pages > 0;
}

/// The readers of these check for themselves.
bool isLeftToTheReader(const Bytes& /*file*/)
{
    return true;
}

struct Format {
    std::string_view beginning;
    const char* name; // of Qt's reader
    bool (*isWhole)(const Bytes& file);
    void (*prepare)(QByteArray& file) = nullptr; // for the reader
};

using namespace std::string_view_literals;

constexpr std::array kFormats{
    Format{"\x89PNG\r\n\x1A\n"sv, "png", isWholePng, dropPngText},
    Format{"\xFF\xD8\xFF"sv, "jpeg", isWholeJpeg},
    Format{"GIF8"sv, "gif", isWholeGif},
    Format{"BM"sv, "bmp", isWholeBmp, padBmp},
    Format{"II\x2A\0"sv, "tiff", isWholeTiff},
    Format{"MM\0\x2A"sv, "tiff", isWholeTiff},
    Format{"\0\0\1\0"sv, "ico", isLeftToTheReader, hidePngText},
    Format{"\0\0\2\0"sv, "cur", isLeftToTheReader, hidePngText},
    Format{"RIFF????WEBP"sv, "webp", isLeftToTheReader},
};

} // namespace

std::unique_ptr<PictureFile> PictureFile::open(Ref<NSData> data)
{
    if (!data) {
        return nullptr;
    }
    const Bytes bytes(data->bytes());
    const auto* format = std::ranges::find_if(
        kFormats, [&](const Format& candidate) { return bytes.beginsWith(candidate.beginning); });
    if (format == kFormats.end() || !format->isWhole(bytes)) {
        return nullptr;
    }
    QByteArray prepared = QByteArray::fromRawData(reinterpret_cast<const char*>(data->bytes().data()),
                                                  static_cast<qsizetype>(data->length()));
    if (format->prepare != nullptr) {
        format->prepare(prepared);
    }
    return std::unique_ptr<PictureFile>(new PictureFile(std::move(data), std::move(prepared), format->name));
}

PictureFile::PictureFile(Ref<NSData> data, QByteArray bytes, const char* format)
    : _data(std::move(data)), _bytes(std::move(bytes)), _format(format)
{
    restart();
    _isAnimation = _reader->supportsAnimation();
    _count = std::max(_reader->imageCount(), 1);
    if (!_isAnimation) {
        _count = std::min(_count, kMostPictures);
    }
}

PictureFile::~PictureFile() = default;

void PictureFile::restart()
{
    _reader.reset();
    _buffer.close();
    _buffer.setData(_bytes);
    _buffer.open(QIODevice::ReadOnly);
    _reader = std::make_unique<QImageReader>(&_buffer, _format);
    _reader->setAutoDetectImageFormat(false);
    _reader->setAutoTransform(true);
    _next = 0;
}

QImage PictureFile::picture(int index, qint64 mostBytes)
{
    if (index < 0 || index >= _count) {
        return {};
    }
    if (_isAnimation ? index < _next : _count == 1) {
        restart();
    }
    if (!_isAnimation && _count > 1 && !_reader->jumpToImage(index)) {
        return {};
    }
    // The sizes that files declare are held against the limit before there is room made for them; those
    // that a file tells only while it is read, and deeper pixels, against Qt's limit, in MiB. That one is
    // of the process, and is put back.
    const auto restore =
        qScopeGuard([before = QImageReader::allocationLimit()] { QImageReader::setAllocationLimit(before); });
    QImageReader::setAllocationLimit(kMostPictureBytes >> 20);
    const auto fits = [&](QSize size) {
        constexpr qint64 kBytesPerPixel = 4;
        return qint64{size.width()} * size.height() <= mostBytes / kBytesPerPixel;
    };
    if (!fits(_reader->size())) {
        return {};
    }
    QImage image = _reader->read();
    for (; _isAnimation && _next < index; ++_next) {
        image = _reader->read();
    }
    _next = index + 1;
    return fits(image.size()) ? image : QImage();
}
