#include "platform/qt/PictureFile.h"

#include "platform/foundation/NSData.h"

#include <QImageReader>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
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

/// Segments up to the pixels, more between the scans of these, and an end. One bit at least stands for
/// each block of 32 by 32 pixels, the largest there is.
bool isWholeJpeg(const Bytes& file)
{
    constexpr unsigned kEndOfImage = 0xD9;
    constexpr unsigned kStartOfScan = 0xDA;
    constexpr std::uint64_t kPixelsPerByte = kBitsPerByte * 32 * 32;
    const auto isFrameHeader = [](unsigned marker) { return marker >= 0xC0 && marker <= 0xC2; };
    const auto standsAlone = [](unsigned marker) { // a stuffed 0, a restart, or fill
        return marker == 0x00 || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8) || marker == 0xFF;
    };
    std::uint64_t pixels = 0;
    std::uint64_t scanned = 0;
    bool inScan = false;
    for (std::uint64_t offset = 2; file.has(offset, 2);) {
        const unsigned marker = file.at(offset + 1);
        if (file.at(offset) != 0xFF || standsAlone(marker)) {
            if (!inScan && file.at(offset) != 0xFF) {
                return false;
            }
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
        } else {
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

/// The pixels are there: as many bytes as the size needs, or as the header tells for compressed ones.
bool isWholeBmp(const Bytes& file)
{
    constexpr std::uint64_t kSmallHeader = 12;
    // Numbers beyond these are taken for these, so that products fit. No such picture is decoded.
    constexpr std::uint64_t kMostSide = 1 << 24;
    constexpr std::uint64_t kMostDepth = 1 << 6;
    constexpr std::uint64_t kHeader = 54;
    const std::uint64_t pixels = file.little(10, 4);
    if (file.little(14, 4) == kSmallHeader) {
        const std::uint64_t stride = (file.little(18, 2) * file.little(24, 2) + 31) / 32 * 4;
        return stride > 0 && file.has(pixels, stride * file.little(20, 2));
    }
    const auto extent = [&](std::uint64_t offset) { // a negative height counts from the top
        const auto side = static_cast<std::int32_t>(file.little(offset, 4));
        return std::min(static_cast<std::uint64_t>(std::abs(std::int64_t{side})), kMostSide);
    };
    constexpr std::array<std::uint64_t, 2> kRunLengths{1, 2};
    const bool isCompressed = std::ranges::find(kRunLengths, file.little(30, 4)) != kRunLengths.end();
    const std::uint64_t stride = (extent(18) * std::min(file.little(28, 2), kMostDepth) + 31) / 32 * 4;
    const std::uint64_t needed = isCompressed ? file.little(34, 4) : stride * extent(22);
    return file.has(0, kHeader) && needed > 0 && file.has(pixels, needed);
}

/// A directory of a TIFF file, in the byte order of the file.
class TiffDirectory
{
public:
    enum Tag { StripOffsets = 273, StripByteCounts = 279, TileOffsets = 324, TileByteCounts = 325 };

    explicit TiffDirectory(const Bytes& file)
        : _file(file), _isLittle(file.at(0) == 'I'), _offset(number(4, 4))
    {
    }

    /// Whether there is one here; after the last there is none.
    bool exists() const { return _offset != 0; }
    bool isWhole() const { return _file.has(end(), 4); }
    void goToNext() { _offset = number(end(), 4); }

    /// Whether the parts that the picture is stored in are there, each with something in it.
    bool hasPixels() const
    {
        const bool isTiled = find(TileOffsets).count > 0;
        const Values starts = find(isTiled ? TileOffsets : StripOffsets);
        const Values sizes = find(isTiled ? TileByteCounts : StripByteCounts);
        if (starts.count == 0 || starts.count != sizes.count) {
            return false;
        }
        for (std::uint64_t i = 0; i < starts.count; ++i) {
            const std::uint64_t length = number(sizes.offset + i * sizes.width, sizes.width);
            if (length == 0 || !_file.has(number(starts.offset + i * starts.width, starts.width), length)) {
                return false;
            }
        }
        return true;
    }

private:
    struct Values {
        std::uint64_t offset = 0;
        std::uint64_t count = 0;
        unsigned width = 0;
    };

    static constexpr unsigned kEntryBytes = 12;

    std::uint64_t number(std::uint64_t offset, unsigned width) const
    {
        return _isLittle ? _file.little(offset, width) : _file.big(offset, width);
    }
    std::uint64_t end() const { return _offset + 2 + kEntryBytes * number(_offset, 2); }

    /// Where the values of a tag are; none if they are not all in the file.
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
            return isThere ? Values{offset, count, width} : Values{};
        }
        return {};
    }

    const Bytes& _file;
    bool _isLittle;
    std::uint64_t _offset;
};

bool isWholeTiff(const Bytes& file)
{
    TiffDirectory directory(file);
    int pages = 0;
    for (; directory.exists() && pages < kMostPictures; ++pages) {
        if (!directory.isWhole() || !directory.hasPixels()) {
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
};

using namespace std::string_view_literals;

constexpr std::array kFormats{
    Format{"\x89PNG\r\n\x1A\n"sv, "png", isWholePng},
    Format{"\xFF\xD8\xFF"sv, "jpeg", isWholeJpeg},
    Format{"GIF8"sv, "gif", isWholeGif},
    Format{"BM"sv, "bmp", isWholeBmp},
    Format{"II\x2A\0"sv, "tiff", isWholeTiff},
    Format{"MM\0\x2A"sv, "tiff", isWholeTiff},
    Format{"\0\0\1\0"sv, "ico", isLeftToTheReader},
    Format{"\0\0\2\0"sv, "cur", isLeftToTheReader},
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
    return std::unique_ptr<PictureFile>(new PictureFile(std::move(data), format->name));
}

PictureFile::PictureFile(Ref<NSData> data, const char* format)
    : _data(std::move(data)),
      _bytes(QByteArray::fromRawData(reinterpret_cast<const char*>(_data->bytes().data()),
                                     static_cast<qsizetype>(_data->length()))),
      _format(format)
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
    // that a file tells only while it is read, and deeper pixels, against Qt's limit, which is the same.
    constexpr qint64 kBytesPerPixel = 4;
    const QSize size = _reader->size();
    if (qint64{size.width()} * size.height() > mostBytes / kBytesPerPixel) {
        return {};
    }
    QImage image = _reader->read();
    for (; _isAnimation && _next < index; ++_next) {
        image = _reader->read();
    }
    _next = index + 1;
    return image.sizeInBytes() > mostBytes ? QImage() : image;
}
