// The shell's process-wide values: program folders, configuration, current project, prompts.
// One object, made at start-up and handed by reference to whoever needs it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "shell/project_record.h"
#include "shell/prompts.h"
#include "shell/software_config.h"

namespace orvak::shell {

inline constexpr std::string_view kTitle = "Orvak Ver 2";
inline constexpr std::string_view kFrameKey = "MDITYR";
inline constexpr std::string_view kDriversFolderName = "DRIVERS";
inline constexpr std::string_view kGeneralFolderName = "GENERAL";
inline constexpr std::string_view kSymbolsFolderName = "Symbols";
inline constexpr std::string_view kDefaultProjectFolderName = "DEFAULT.prj";
inline constexpr std::string_view kScratchFolderKey = "TMPDIR";
inline constexpr std::string_view kSwcFile = "SWC";
inline constexpr std::string_view kPrjnoFile = "PRJNO";
inline constexpr std::string_view kLanguageFile = "LANGUAGE.DAT";

struct ShellState {
    std::filesystem::path programFolder;
    std::string title{kTitle};
    std::string frameKey{kFrameKey};

    SoftwareConfig software; ///< SWC
    LastProjectState last;   ///< PRJNO: projects folder, project path, user, settings
    std::string projectName; ///< project path less the projects folder
    ProjectRecord project;   ///< GEN.CST of the current project
    std::string workFolder;  ///< from GEN.CST, leading blanks removed
    std::string sheetName{kDefaultSheetName};
    std::string outputName;
    std::int16_t outputNumber = 0;
    /// The floor the beam and column forms work on (its number); 0 when none is chosen.
    std::int16_t currentFloor = 0;

    std::string tempFolderKey{kScratchFolderKey};
    float scaleFactor1 = 1.0f;
    float scaleFactor2 = 1.0f;
    std::int32_t defaultColour = 1; ///< QB colour 1, blue
    std::int16_t screenWidthTwips = 0;
    std::int16_t screenHeightTwips = 0;
    std::int16_t toolAreaHeightTwips = 1000;
    std::int16_t workAreaHeightTwips = 0;
    std::string fixedFontName = "FIXEDSYS";
    std::int32_t colourLimit = 255;
    bool loading = false;

    /// Problems met at start-up that did not stop it (a file that could not be read, a
    /// language name that cannot be a folder name), one plain sentence each, for the frame
    /// to show once.
    std::vector<std::string> warnings;

    PromptList generalPrompts; ///< GNRL, 30 from line 2
    PromptList globalPrompts1; ///< GLBLPRM, 36 from line 2
    PromptList globalPrompts2; ///< GLBLPRM, 120 from line 49

    std::filesystem::path driversFolder() const { return programFolder / kDriversFolderName; }
    std::filesystem::path generalFolder() const { return programFolder / kGeneralFolderName; }
    std::filesystem::path symbolsFolder() const { return programFolder / kSymbolsFolderName; }
    std::filesystem::path defaultProjectFolder() const {
        return programFolder / kDefaultProjectFolderName;
    }
    const std::string& language() const { return software.language; }
    bool rightToLeft() const { return software.rightToLeft(); }
    bool hasProject() const { return !last.projectPath.empty(); }
    std::filesystem::path projectPath() const { return last.projectPath; }
};

} // namespace orvak::shell
