// The table files of the grid forms: cell numbers and texts, and the save through TMPFIL
// that replaces the table file in one step or removes it when no row is in use.
#include "core/table_file.h"

#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "core/error.h"

namespace fs = std::filesystem;

namespace orvak::core {

namespace {

std::string cannotSave(std::string_view tableName) {
    return "The " + std::string(tableName) + " cannot be saved: ";
}

std::string systemMessage(int err) {
    return std::strerror(err);
}

} // namespace

double cellNumber(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) {
        ++at;
    }
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        negative = text[at] == '-';
        ++at;
    }
    if (at >= text.size() ||
        !(std::isdigit(static_cast<unsigned char>(text[at])) || text[at] == '.')) {
        return 0.0; // also keeps "inf" and "nan" out
    }
    double value = 0.0;
    const auto [end, ec] = std::from_chars(text.data() + at, text.data() + text.size(), value);
    if (ec != std::errc() || !std::isfinite(value)) {
        return 0.0;
    }
    return negative ? -value : value;
}

std::string cellTextFor(float value) {
    if (value == 0.0f || !std::isfinite(value)) {
        return "0";
    }
    char buf[64];
    const auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed);
    ORVAK_ASSERT(ec == std::errc());
    return std::string(buf, end);
}

void saveTableFile(const fs::path& target, const std::vector<std::uint8_t>& records,
                   std::string_view tableName, const BeforeRenameHook& beforeRename) {
    const fs::path folder = target.parent_path();
    const fs::path temp = resolveNoCase(folder, kTableTempFile);
    // A failed write leaves TMPFIL as far as it got; the table file is not touched.
    if (const std::error_code err = writeFileBytes(temp, records, true, FailedWrite::KeepPart)) {
        throw FileError(temp, cannotSave(tableName) + systemMessage(err.value()));
    }
    if (beforeRename) {
        beforeRename(temp);
    }
    std::error_code ec;
    if (!records.empty()) {
        // rename() replaces the table file in one step: a crash leaves the old or the new one.
        if (::rename(temp.c_str(), target.c_str()) != 0) {
            throw FileError(target, cannotSave(tableName) + systemMessage(errno));
        }
    } else if (fs::exists(target, ec)) {
        fs::remove(target, ec);
        if (ec) {
            throw FileError(target, "The empty " + std::string(tableName) +
                                        " cannot replace the old one: " + ec.message());
        }
    }
    syncFolder(folder);
}

TableRecords::TableRecords(RecordBuffer blank, std::size_t rows)
    : m_blank(std::move(blank)), m_rows(rows, m_blank) {
    ORVAK_ASSERT(m_blank.length() > 0);
}

void TableRecords::load(const RecordFile& file, std::size_t rows, std::size_t shownRecords) {
    ORVAK_ASSERT(file.recordLength() == m_blank.length() && shownRecords <= rows);
    m_rows.assign(rows, m_blank);
    m_notShown.clear();
    for (std::size_t n = 1; n <= file.count(); ++n) {
        RecordBuffer record = file.read(n);
        if (!record.inUse()) {
            continue;
        }
        if (n <= shownRecords) {
            m_rows[n - 1] = std::move(record);
        } else {
            m_notShown.push_back(std::move(record));
        }
    }
}

const RecordBuffer& TableRecords::record(std::size_t row) const {
    ORVAK_ASSERT(row < m_rows.size());
    return m_rows[row];
}

std::size_t
TableRecords::save(const fs::path& target, std::string_view tableName,
                   const std::function<bool(std::size_t row)>& inUse,
                   const std::function<void(std::size_t row, RecordBuffer& record)>& fill,
                   const RowProgress& progress, const BeforeRenameHook& beforeRename) {
    const int rows = static_cast<int>(m_rows.size());
    ORVAK_ASSERT(static_cast<std::size_t>(rows) == m_rows.size());
    // The rows take their saved records only once the file holds them: after a failure the
    // next save builds on the records as they were.
    std::vector<RecordBuffer> saved = m_rows;
    std::vector<std::uint8_t> bytes;
    std::size_t written = 0;
    for (std::size_t row = 0; row < saved.size(); ++row) {
        RecordBuffer& record = saved[row];
        if (inUse(row)) {
            record.bytes()[0] = static_cast<std::uint8_t>(kUseMark);
            fill(row, record);
            bytes.insert(bytes.end(), record.bytes().begin(), record.bytes().end());
            ++written;
        } else {
            // A row left out has no record any more: filled again, it starts afresh.
            record = m_blank;
        }
        if (progress) {
            progress(static_cast<int>(row) + 1, rows);
        }
    }
    for (const RecordBuffer& record : m_notShown) {
        bytes.insert(bytes.end(), record.bytes().begin(), record.bytes().end());
        ++written;
    }
    saveTableFile(target, bytes, tableName, beforeRename);
    m_rows = std::move(saved);
    if (progress) {
        progress(0, rows);
    }
    return written;
}

} // namespace orvak::core
