// The software configuration SWC and the last-project state PRJNO of the GENERAL folder.
// Both are read item by item; a short or damaged file leaves the items not reached at default.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace orvak::shell {

/// SWC: eight items, one per line.
struct SoftwareConfig {
    std::string text1;                ///< item 1, whole line
    std::string text2;                ///< item 2, whole line
    std::string text3;                ///< item 3, whole line
    std::string language = "English"; ///< item 4, whole line
    std::int16_t settingA = 2;        ///< item 5
    std::int16_t settingB = 0;        ///< item 6
    std::int16_t settingC = 1;        ///< item 7, clamped to 1..2 after reading
    std::string text4;                ///< item 8, string field

    /// 1 when the language, trimmed and upper-cased, is not "ENGLISH".
    bool rightToLeft() const;
};

/// Reads SWC; a missing file gives the defaults. Throws FileError only when the file exists
/// but cannot be read.
SoftwareConfig readSoftwareConfig(const std::filesystem::path& swcPath);
/// The items of SWC from its bytes: each read stops at the end of the text, items not reached
/// keep their defaults, an integer item that holds no number keeps its default, and a blank
/// language line keeps "English".
SoftwareConfig parseSoftwareConfig(std::string content);
/// The bytes of SWC: items 1-4 as whole lines, items 5-7 one integer a line, item 8 quoted.
std::string formatSoftwareConfig(const SoftwareConfig& config);
/// Writes SWC crash-safely, in the order it is read.
void writeSoftwareConfig(const std::filesystem::path& swcPath, const SoftwareConfig& config);

/// PRJNO: thirteen items on four lines (1-2, 3-7, 8-10, 11-13).
struct LastProjectState {
    std::string projectsFolder;       ///< item 1
    std::string projectPath;          ///< item 2
    std::int16_t projectSetting1 = 1; ///< item 3
    std::int16_t projectSetting2 = 1; ///< item 4
    std::int16_t projectSetting3 = 1; ///< item 5
    std::string projectText1;         ///< item 6
    std::string projectText2;         ///< item 7
    std::string userName = "USER";    ///< item 8
    std::int16_t userSetting1 = 1;    ///< item 9
    std::int16_t userSetting2 = 2;    ///< item 10
    std::int16_t projectSetting4 = 0; ///< item 11
    float projectValue = 0.0f;        ///< item 12
    std::int16_t projectSetting5 = 0; ///< item 13
};

/// Reads PRJNO; a missing file gives the defaults. Throws FileError only when the file exists
/// but cannot be read.
LastProjectState readLastProjectState(const std::filesystem::path& prjnoPath);
/// Writes PRJNO crash-safely.
void writeLastProjectState(const std::filesystem::path& prjnoPath, const LastProjectState& state);
/// The items of PRJNO from its bytes, each read guarded by the end of the text; a number item
/// that holds no number keeps its default.
LastProjectState parseLastProjectState(std::string content);
/// The bytes of PRJNO: four lines of comma-separated fields, strings in double quotes (a double
/// quote inside a string is written as an apostrophe).
std::string formatLastProjectState(const LastProjectState& state);

} // namespace orvak::shell
