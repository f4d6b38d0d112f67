// The project record GEN.CST: one 611-byte record of titles, texts, codes, a date and a few
// numbers, the general data of a design job.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

#include "core/record.h"

namespace orvak::shell {

inline constexpr std::string_view kProjectRecordFile = "GEN.CST";
inline constexpr std::string_view kDefaultSheetName = "Sheet1";

inline constexpr auto kGenCstLayout = core::packFields<17>({{
    {"marker", core::FieldType::Text, 1},
    {"projectCode", core::FieldType::Int16},
    {"unitsText", core::FieldType::Text, 3},
    {"titleLines", core::FieldType::Text, 30, 8},
    {"shortTexts", core::FieldType::Text, 10, 2},
    {"texts9to11", core::FieldType::Text, 30, 3},
    {"codes", core::FieldType::Text, 12, 2},
    {"values", core::FieldType::Single, 0, 8},
    {"workFolder", core::FieldType::Text, 99},
    {"choice", core::FieldType::Int16},
    {"text12", core::FieldType::Text, 30},
    {"count", core::FieldType::Int16},
    {"dateText", core::FieldType::Text, 30},
    {"value", core::FieldType::Single},
    {"outputName", core::FieldType::Text, 20},
    {"outputNumber", core::FieldType::Int16},
    {"sheetName", core::FieldType::Text, 10},
}});
static_assert(kGenCstLayout.size == 611, "GEN.CST records are 611 bytes");

/// The fields of GEN.CST, text trimmed of trailing blanks.
struct ProjectRecord {
    bool valid = false; ///< the marker was "1"
    std::int16_t projectCode = 0;
    std::string unitsText;
    std::array<std::string, 8> titleLines;  ///< Projdata fields 1-8
    std::array<std::string, 2> shortTexts;  ///< fields 9-10
    std::array<std::string, 3> texts9to11;  ///< fields 11-13
    std::array<std::string, 2> codes;       ///< fields 14-15
    std::array<float, 8> values{};
    std::string workFolder;                 ///< field 16, trimmed and upper-cased
    std::int16_t choice = 1;                ///< field 17, 1..2
    std::string text12;                     ///< field 18
    std::int16_t count = 1;                 ///< field 19, 1..199
    std::string dateText;                   ///< field 20, "dd-mm-yyyy" stamped on save
    float value = 0.0f;                     ///< field 21, 0..999.99
    std::string outputName;
    std::int16_t outputNumber = 0;
    std::string sheetName;
};

ProjectRecord decodeProjectRecord(const core::RecordBuffer& rec);
core::RecordBuffer encodeProjectRecord(const ProjectRecord& record);

/// Reads record 1 of GEN.CST in the project folder. A missing, short or unmarked file gives a
/// blank record (valid false). A blank sheet name becomes "Sheet1" and, for a valid record,
/// is written back at once.
ProjectRecord readProjectRecord(const std::filesystem::path& projectPath);
/// Writes record 1 with the marker "1", crash-safely.
void writeProjectRecord(const std::filesystem::path& projectPath, const ProjectRecord& record);

} // namespace orvak::shell
