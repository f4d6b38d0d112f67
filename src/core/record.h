// Fixed-record files: little-endian int16 / IEEE single fields, blank-padded single-byte text.
// A record type is described once by a packed field layout; files are numbered from record 1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/error.h"

namespace orvak::core {

enum class FieldType : std::uint8_t { Text, Int16, Int32, Single };

constexpr std::size_t fieldTypeWidth(FieldType type, std::size_t textWidth) {
    switch (type) {
    case FieldType::Int16:
        return 2;
    case FieldType::Int32:
    case FieldType::Single:
        return 4;
    case FieldType::Text:
        return textWidth;
    }
    return 0;
}

/// One field of a record as declared: its type, the width of one text value, and how many
/// values it holds in a row (a table of 12 singles is one field with count 12).
struct FieldSpec {
    std::string_view name;
    FieldType type;
    std::size_t textWidth = 0; ///< characters of one text value; ignored for numbers
    std::size_t count = 1;
};

/// One field as placed in the record: byte offset of its first value and width of one value.
struct FieldDef {
    std::string_view name;
    FieldType type;
    std::size_t offset;
    std::size_t width; ///< bytes of one value
    std::size_t count; ///< values in a row
    constexpr std::size_t end() const { return offset + width * count; }
};

/// A record layout: fields packed in order without padding.
template <std::size_t N> struct RecordLayout {
    std::array<FieldDef, N> fields{};
    std::size_t size = 0;

    /// The field of the given name. A name that is not in the layout is a bug: it fails to
    /// compile when used in a constant expression, and otherwise asserts, naming the field.
    constexpr const FieldDef& operator[](std::string_view name) const {
        for (const auto& f : fields) {
            if (f.name == name) {
                return f;
            }
        }
        // The failure is not a constant expression, so a compile-time use does not compile.
        ORVAK_FAIL(std::string("the record layout has no field \"").append(name).append("\""));
    }
};

template <std::size_t N>
constexpr RecordLayout<N> packFields(const std::array<FieldSpec, N>& specs) {
    RecordLayout<N> layout;
    std::size_t offset = 0;
    for (std::size_t i = 0; i < N; ++i) {
        const auto& s = specs[i];
        const std::size_t width = fieldTypeWidth(s.type, s.textWidth);
        layout.fields[i] = FieldDef{s.name, s.type, offset, width, s.count};
        offset += width * s.count;
    }
    layout.size = offset;
    return layout;
}

// ---- little-endian scalars -------------------------------------------------------------

std::int16_t readInt16(const std::uint8_t* p);
std::int32_t readInt32(const std::uint8_t* p);
float readSingle(const std::uint8_t* p);
void writeInt16(std::uint8_t* p, std::int16_t v);
void writeInt32(std::uint8_t* p, std::int32_t v);
void writeSingle(std::uint8_t* p, float v);

/// The use mark of a record that holds data.
inline constexpr char kUseMark = '1';

/// The bytes of one record. A fresh buffer is all zero bytes; blankRecord() gives one whose
/// text fields are blanks, which is how a record written from an empty form looks.
class RecordBuffer {
public:
    explicit RecordBuffer(std::size_t length);
    RecordBuffer(std::vector<std::uint8_t> bytes);

    std::size_t length() const { return m_bytes.size(); }
    const std::vector<std::uint8_t>& bytes() const { return m_bytes; }
    std::vector<std::uint8_t>& bytes() { return m_bytes; }

    /// Value `index` (0-based) of a field. Precondition: the field lies inside the record and
    /// index < field.count.
    std::int16_t getInt16(const FieldDef& f, std::size_t index = 0) const;
    std::int32_t getInt32(const FieldDef& f, std::size_t index = 0) const;
    float getSingle(const FieldDef& f, std::size_t index = 0) const;
    /// Text as stored, blanks included (single-byte, no conversion).
    std::string getText(const FieldDef& f, std::size_t index = 0) const;
    /// Text with trailing blanks and NULs removed.
    std::string getTrimmedText(const FieldDef& f, std::size_t index = 0) const;

    void setInt16(const FieldDef& f, std::int16_t v, std::size_t index = 0);
    void setInt32(const FieldDef& f, std::int32_t v, std::size_t index = 0);
    void setSingle(const FieldDef& f, float v, std::size_t index = 0);
    /// Left-aligned, blank-padded, cut to the field's width.
    void setText(const FieldDef& f, std::string_view text, std::size_t index = 0);

    /// True when the first byte is the use mark "1".
    bool inUse() const {
        return !m_bytes.empty() && m_bytes[0] == static_cast<std::uint8_t>(kUseMark);
    }

private:
    std::vector<std::uint8_t> m_bytes;
};

/// A fixed-record file held in memory. Records are numbered from 1; the record count is the
/// file length divided by the record length (a partial last record is not counted unless the
/// caller asks for rounding). Saving is crash-safe: a temporary file beside the target is
/// written, flushed and renamed over it.
class RecordFile {
public:
    /// How a partial last record is taken: left out (kept as the tail), counted when at
    /// least half a record, or refused as damage (FileError naming the record).
    enum class Count { Truncate, Round, WholeOnly };

    /// Loads `path`; a missing file is an empty file. Throws FileError when it cannot be read.
    static RecordFile load(const std::filesystem::path& path, std::size_t recordLength,
                           Count count = Count::Truncate);
    /// An empty file image for `path` (nothing is read or written).
    RecordFile(std::filesystem::path path, std::size_t recordLength);

    const std::filesystem::path& path() const { return m_path; }
    std::size_t recordLength() const { return m_recordLength; }
    std::size_t count() const { return m_count; }

    /// Record n (1-based). A record beyond the end, or the missing tail of a partial record,
    /// reads as zero bytes (the buffer's fresh state).
    RecordBuffer read(std::size_t n) const;
    /// Puts record n (1-based); a record beyond the end extends the file, filling any gap
    /// with fresh records. Precondition: rec.length() == recordLength().
    void write(std::size_t n, const RecordBuffer& rec);
    /// Drops every record after n.
    void truncate(std::size_t n);

    /// Writes the whole image to path() crash-safely (see saveFileAtomically).
    void save() const;
    /// The bytes save() writes: the records, then a kept partial tail.
    std::vector<std::uint8_t> image() const;

private:
    std::filesystem::path m_path;
    std::size_t m_recordLength;
    std::size_t m_count = 0;
    std::vector<std::uint8_t> m_bytes; // whole records only
    // Bytes of a partial last record not counted as a record; saved back as they were, so a
    // save never loses what a damaged file held, until a write covers them.
    std::vector<std::uint8_t> m_tail;
};

/// A record of the layout's size with blanks in every text field and zeros elsewhere.
template <std::size_t N> RecordBuffer blankRecord(const RecordLayout<N>& layout) {
    RecordBuffer rec(layout.size);
    for (const auto& f : layout.fields) {
        if (f.type == FieldType::Text) {
            for (std::size_t i = 0; i < f.count; ++i) {
                rec.setText(f, {}, i);
            }
        }
    }
    return rec;
}

} // namespace orvak::core
