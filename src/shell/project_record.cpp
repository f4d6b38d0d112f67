// The project record GEN.CST: record 1 of a 611-byte random-access file, decoded into the
// project fields and written back blank-padded with the in-use marker.
#include "shell/project_record.h"

#include <algorithm>

#include "core/error.h"
#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::shell {

namespace {

const auto& L = kGenCstLayout;

std::string trimmedUpper(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(' ');
    std::string out(text.substr(first, last - first + 1));
    // Only ASCII letters have a case here: the bytes are Windows-1252 or -1255 text, and a
    // Hebrew letter has none.
    for (char& c : out) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return out;
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(' ') == std::string_view::npos;
}

} // namespace

ProjectRecord decodeProjectRecord(const core::RecordBuffer& rec) {
    ProjectRecord r;
    if (rec.length() < L.size || !rec.inUse()) {
        return r;
    }
    r.valid = true;
    r.projectCode = rec.getInt16(L["projectCode"]);
    r.unitsText = rec.getTrimmedText(L["unitsText"]);
    for (std::size_t i = 0; i < r.titleLines.size(); ++i) {
        r.titleLines[i] = rec.getTrimmedText(L["titleLines"], i);
    }
    for (std::size_t i = 0; i < r.shortTexts.size(); ++i) {
        r.shortTexts[i] = rec.getTrimmedText(L["shortTexts"], i);
    }
    for (std::size_t i = 0; i < r.texts9to11.size(); ++i) {
        r.texts9to11[i] = rec.getTrimmedText(L["texts9to11"], i);
    }
    for (std::size_t i = 0; i < r.codes.size(); ++i) {
        r.codes[i] = rec.getTrimmedText(L["codes"], i);
    }
    for (std::size_t i = 0; i < r.values.size(); ++i) {
        r.values[i] = rec.getSingle(L["values"], i);
    }
    r.workFolder = trimmedUpper(rec.getText(L["workFolder"]));
    r.choice = rec.getInt16(L["choice"]);
    r.text12 = rec.getTrimmedText(L["text12"]);
    r.count = rec.getInt16(L["count"]);
    r.dateText = rec.getTrimmedText(L["dateText"]);
    r.value = rec.getSingle(L["value"]);
    r.outputName = rec.getTrimmedText(L["outputName"]);
    r.outputNumber = rec.getInt16(L["outputNumber"]);
    r.sheetName = rec.getTrimmedText(L["sheetName"]);
    return r;
}

core::RecordBuffer encodeProjectRecord(const ProjectRecord& r) {
    core::RecordBuffer rec = core::blankRecord(L);
    rec.setText(L["marker"], std::string_view(&core::kUseMark, 1));
    rec.setInt16(L["projectCode"], r.projectCode);
    rec.setText(L["unitsText"], r.unitsText);
    for (std::size_t i = 0; i < r.titleLines.size(); ++i) {
        rec.setText(L["titleLines"], r.titleLines[i], i);
    }
    for (std::size_t i = 0; i < r.shortTexts.size(); ++i) {
        rec.setText(L["shortTexts"], r.shortTexts[i], i);
    }
    for (std::size_t i = 0; i < r.texts9to11.size(); ++i) {
        rec.setText(L["texts9to11"], r.texts9to11[i], i);
    }
    for (std::size_t i = 0; i < r.codes.size(); ++i) {
        rec.setText(L["codes"], r.codes[i], i);
    }
    for (std::size_t i = 0; i < r.values.size(); ++i) {
        rec.setSingle(L["values"], r.values[i], i);
    }
    rec.setText(L["workFolder"], trimmedUpper(r.workFolder));
    rec.setInt16(L["choice"], r.choice);
    rec.setText(L["text12"], r.text12);
    rec.setInt16(L["count"], r.count);
    rec.setText(L["dateText"], r.dateText);
    rec.setSingle(L["value"], r.value);
    rec.setText(L["outputName"], r.outputName);
    rec.setInt16(L["outputNumber"], r.outputNumber);
    rec.setText(L["sheetName"], r.sheetName);
    return rec;
}

ProjectRecord readProjectRecord(const fs::path& projectPath) {
    const fs::path file = core::resolveNoCase(projectPath, kProjectRecordFile);
    const auto bytes = core::readWholeFile(file);
    ProjectRecord record;
    // Only a whole record 1 counts; bytes after it (a longer file) are left alone.
    if (bytes && bytes->size() >= L.size) {
        record = decodeProjectRecord(
            core::RecordBuffer(std::vector<std::uint8_t>(bytes->begin(), bytes->begin() + L.size)));
    }
    if (isBlank(record.sheetName)) {
        record.sheetName = std::string(kDefaultSheetName);
        if (record.valid) {
            writeProjectRecord(projectPath, record);
        }
    }
    return record;
}

void writeProjectRecord(const fs::path& projectPath, const ProjectRecord& record) {
    const fs::path file = core::resolveNoCase(projectPath, kProjectRecordFile);
    const core::RecordBuffer rec = encodeProjectRecord(record);
    // Record 1 is replaced; anything the file holds after it stays as it was.
    std::vector<std::uint8_t> bytes =
        core::readWholeFile(file).value_or(std::vector<std::uint8_t>{});
    if (bytes.size() < L.size) {
        bytes.resize(L.size);
    }
    std::copy(rec.bytes().begin(), rec.bytes().end(), bytes.begin());
    core::saveFileAtomically(file, bytes);
}

} // namespace orvak::shell
