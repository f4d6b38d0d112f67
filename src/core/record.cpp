// Fixed-record files: little-endian fields and the in-memory image of a record file.
// Bytes are assembled by hand so the layout is the same on any host byte order.
#include "core/record.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "core/error.h"
#include "core/file_util.h"

namespace orvak::core {

std::int16_t readInt16(const std::uint8_t* p) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(p[0] | (p[1] << 8)));
}

std::int32_t readInt32(const std::uint8_t* p) {
    const std::uint32_t v =
        static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) |
        (static_cast<std::uint32_t>(p[2]) << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
    return static_cast<std::int32_t>(v);
}

float readSingle(const std::uint8_t* p) {
    return std::bit_cast<float>(static_cast<std::uint32_t>(readInt32(p)));
}

void writeInt16(std::uint8_t* p, std::int16_t v) {
    const auto u = static_cast<std::uint16_t>(v);
    p[0] = static_cast<std::uint8_t>(u & 0xFF);
    p[1] = static_cast<std::uint8_t>(u >> 8);
}

void writeInt32(std::uint8_t* p, std::int32_t v) {
    const auto u = static_cast<std::uint32_t>(v);
    for (int i = 0; i < 4; ++i) {
        p[i] = static_cast<std::uint8_t>((u >> (8 * i)) & 0xFF);
    }
}

void writeSingle(std::uint8_t* p, float v) {
    writeInt32(p, static_cast<std::int32_t>(std::bit_cast<std::uint32_t>(v)));
}

RecordBuffer::RecordBuffer(std::size_t length) : m_bytes(length, 0) {}

RecordBuffer::RecordBuffer(std::vector<std::uint8_t> bytes) : m_bytes(std::move(bytes)) {}

namespace {
std::size_t valueOffset(const FieldDef& f, std::size_t index, std::size_t recordLength) {
    ORVAK_ASSERT(index < f.count);
    ORVAK_ASSERT(f.offset + f.width * (index + 1) <= recordLength);
    return f.offset + f.width * index;
}
} // namespace

std::int16_t RecordBuffer::getInt16(const FieldDef& f, std::size_t index) const {
    ORVAK_ASSERT(f.type == FieldType::Int16);
    return readInt16(&m_bytes[valueOffset(f, index, m_bytes.size())]);
}

std::int32_t RecordBuffer::getInt32(const FieldDef& f, std::size_t index) const {
    ORVAK_ASSERT(f.type == FieldType::Int32);
    return readInt32(&m_bytes[valueOffset(f, index, m_bytes.size())]);
}

float RecordBuffer::getSingle(const FieldDef& f, std::size_t index) const {
    ORVAK_ASSERT(f.type == FieldType::Single);
    return readSingle(&m_bytes[valueOffset(f, index, m_bytes.size())]);
}

std::string RecordBuffer::getText(const FieldDef& f, std::size_t index) const {
    ORVAK_ASSERT(f.type == FieldType::Text);
    const std::size_t at = valueOffset(f, index, m_bytes.size());
    return std::string(reinterpret_cast<const char*>(&m_bytes[at]), f.width);
}

std::string RecordBuffer::getTrimmedText(const FieldDef& f, std::size_t index) const {
    std::string text = getText(f, index);
    const auto last = text.find_last_not_of(std::string_view(" \0", 2));
    text.erase(last == std::string::npos ? 0 : last + 1);
    return text;
}

void RecordBuffer::setInt16(const FieldDef& f, std::int16_t v, std::size_t index) {
    ORVAK_ASSERT(f.type == FieldType::Int16);
    writeInt16(&m_bytes[valueOffset(f, index, m_bytes.size())], v);
}

void RecordBuffer::setInt32(const FieldDef& f, std::int32_t v, std::size_t index) {
    ORVAK_ASSERT(f.type == FieldType::Int32);
    writeInt32(&m_bytes[valueOffset(f, index, m_bytes.size())], v);
}

void RecordBuffer::setSingle(const FieldDef& f, float v, std::size_t index) {
    ORVAK_ASSERT(f.type == FieldType::Single);
    writeSingle(&m_bytes[valueOffset(f, index, m_bytes.size())], v);
}

void RecordBuffer::setText(const FieldDef& f, std::string_view text, std::size_t index) {
    ORVAK_ASSERT(f.type == FieldType::Text);
    const std::size_t at = valueOffset(f, index, m_bytes.size());
    const std::size_t n = std::min(text.size(), f.width);
    // An empty text may have no storage at all: copy nothing rather than from a null pointer.
    std::copy_n(text.begin(), n, m_bytes.begin() + static_cast<std::ptrdiff_t>(at));
    std::fill_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(at + n), f.width - n,
                static_cast<std::uint8_t>(' '));
}

RecordFile::RecordFile(std::filesystem::path path, std::size_t recordLength)
    : m_path(std::move(path)), m_recordLength(recordLength) {
    ORVAK_ASSERT(recordLength > 0);
}

RecordFile RecordFile::load(const std::filesystem::path& path, std::size_t recordLength,
                            Count count) {
    RecordFile file(path, recordLength);
    auto bytes = readWholeFile(path);
    if (!bytes) {
        return file;
    }
    const std::size_t whole = bytes->size() / recordLength;
    const std::size_t rest = bytes->size() % recordLength;
    if (count == Count::WholeOnly && rest > 0) {
        throw FileError(path,
                        "The file is damaged: after its " + std::to_string(whole) +
                            " whole records it ends in " + std::to_string(rest) +
                            " bytes of a partial record",
                        static_cast<std::int64_t>(whole + 1));
    }
    file.m_count = whole;
    if (count == Count::Round && rest * 2 >= recordLength) {
        // A partial last record counts when it is at least half a record; its missing tail
        // reads as zero bytes.
        file.m_count = whole + 1;
    }
    if (file.m_count == whole && rest > 0) {
        file.m_tail.assign(bytes->end() - static_cast<std::ptrdiff_t>(rest), bytes->end());
    }
    bytes->resize(file.m_count * recordLength, 0);
    file.m_bytes = std::move(*bytes);
    return file;
}

RecordBuffer RecordFile::read(std::size_t n) const {
    ORVAK_ASSERT(n >= 1);
    RecordBuffer rec(m_recordLength);
    if (n <= m_count) {
        const auto first = m_bytes.begin() + static_cast<std::ptrdiff_t>((n - 1) * m_recordLength);
        std::copy(first, first + static_cast<std::ptrdiff_t>(m_recordLength), rec.bytes().begin());
    }
    return rec;
}

void RecordFile::write(std::size_t n, const RecordBuffer& rec) {
    ORVAK_ASSERT(n >= 1);
    ORVAK_ASSERT(rec.length() == m_recordLength);
    if (n > m_count) {
        // A partial tail stands where the next record goes: the new record replaces it.
        m_bytes.resize(n * m_recordLength, 0);
        std::copy(m_tail.begin(), m_tail.end(),
                  m_bytes.begin() + static_cast<std::ptrdiff_t>(m_count * m_recordLength));
        m_tail.clear();
        m_count = n;
    }
    std::copy(rec.bytes().begin(), rec.bytes().end(),
              m_bytes.begin() + static_cast<std::ptrdiff_t>((n - 1) * m_recordLength));
}

void RecordFile::truncate(std::size_t n) {
    if (n < m_count) {
        m_count = n;
        m_bytes.resize(n * m_recordLength);
        m_tail.clear();
    }
}

void RecordFile::save() const {
    if (m_tail.empty()) {
        saveFileAtomically(m_path, m_bytes);
        return;
    }
    saveFileAtomically(m_path, image());
}

std::vector<std::uint8_t> RecordFile::image() const {
    std::vector<std::uint8_t> all(m_bytes);
    all.insert(all.end(), m_tail.begin(), m_tail.end());
    return all;
}

} // namespace orvak::core
