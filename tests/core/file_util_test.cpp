// Tests of the host file services: crash-safe saving under injected faults, case-blind lookup
// of files that came from Windows machines, and the check of names typed by the user.
#include "core/file_util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/error.h"
#include "support/temp_dir.h"
#include "support/unprivileged.h"

namespace fs = std::filesystem;

namespace orvak::core {
namespace {

std::vector<std::string> folderEntries(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

const std::string kOld("old \0 content\r\n", 15);

TEST(SafeSave, ReplacesTheFileWhole) {
    test::TempDir dir;
    const fs::path target = dir / "BEAMS.1";
    test::writeBytes(target, kOld + kOld + kOld);
    saveFileAtomically(target, std::string_view("new"));
    EXPECT_EQ(test::readBytes(target), "new") << "a shorter file must not keep the old tail";
    EXPECT_EQ(folderEntries(dir.path()), std::vector<std::string>{"BEAMS.1"});
}

TEST(SafeSave, CrashBeforeRenameLeavesTheOldFile) {
    test::TempDir dir;
    const fs::path target = dir / "GEN.CST";
    test::writeBytes(target, kOld);
    fs::path seenTemp;
    auto dieMidSave = [&](const fs::path& temp) {
        seenTemp = temp;
        // The new content is complete in the temporary file beside the target.
        EXPECT_EQ(temp.parent_path(), target.parent_path());
        EXPECT_EQ(test::readBytes(temp), "new content");
        throw std::runtime_error("power cut");
    };
    EXPECT_THROW(saveFileAtomically(target, std::string_view("new content"), dieMidSave),
                 std::runtime_error);
    EXPECT_FALSE(seenTemp.empty());
    EXPECT_EQ(test::readBytes(target), kOld);
    EXPECT_EQ(folderEntries(dir.path()), std::vector<std::string>{"GEN.CST"});
}

TEST(SafeSave, ReadOnlyFolderIsAFileErrorAndKeepsTheOldFile) {
    test::TempDir dir;
    const fs::path folder = dir / "job.prj";
    fs::create_directory(folder);
    const fs::path target = folder / "GEN.CST";
    test::writeBytes(target, kOld);
    fs::permissions(dir.path(), fs::perms::others_exec | fs::perms::others_read,
                    fs::perm_options::add);
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                                fs::perms::group_exec | fs::perms::others_read |
                                fs::perms::others_exec);

    // 0: FileError as it should be; 1: the save went through; 2: some other exception.
    const int outcome = test::runUnprivileged([&] {
        try {
            saveFileAtomically(target, std::string_view("new"));
        } catch (const FileError& e) {
            return std::string(e.what()).find("GEN.CST") != std::string::npos ? 0 : 3;
        } catch (...) {
            return 2;
        }
        return 1;
    });
    EXPECT_EQ(outcome, 0);
    EXPECT_EQ(test::readBytes(target), kOld);
    EXPECT_EQ(folderEntries(folder), std::vector<std::string>{"GEN.CST"});
}

TEST(SafeSave, FoldersInTheWayAreFileErrors) {
    test::TempDir dir;
    fs::create_directory(dir / "BEAMS.1");
    test::writeBytes(dir / "BEAMS.1" / "inner", "x");
    EXPECT_THROW(saveFileAtomically(dir / "BEAMS.1", std::string_view("new")), FileError);
    EXPECT_EQ(folderEntries(dir.path()), std::vector<std::string>{"BEAMS.1"});
    EXPECT_EQ(test::readBytes(dir / "BEAMS.1" / "inner"), "x");

    EXPECT_THROW(saveFileAtomically(dir / "missing" / "GEN.CST", std::string_view("new")),
                 FileError);
    EXPECT_FALSE(fs::exists(dir / "missing"));

    // Making a folder is quiet when it exists, and fails under a file.
    makeFolder(dir / "a" / "b");
    EXPECT_TRUE(fs::is_directory(dir / "a" / "b"));
    EXPECT_NO_THROW(makeFolder(dir / "a" / "b"));
    EXPECT_THROW(makeFolder(dir / "BEAMS.1" / "inner" / "sub"), FileError);
}

TEST(SafeSave, StaleTemporariesOfCutOffSavesAreRemovedAndALoneOneIsNamed) {
    test::TempDir dir;
    const auto now = fs::file_time_type::clock::now();
    const auto write = [&](const std::string& name, fs::file_time_type when) {
        test::writeBytes(dir / name, "x");
        fs::last_write_time(dir / name, when);
    };
    test::writeBytes(dir / "BEAMS.1", "whole");
    write(".BEAMS.1.tmp123456", now - std::chrono::hours(1)); // the file is there: silent
    write(".CIELS.DAT.tmp42", now - std::chrono::hours(1));   // a first save cut off
    write(".GEN.CST.tmp7", now - std::chrono::seconds(30));   // a save under way: kept
    write(".hidden", now - std::chrono::hours(1));            // not a temporary of ours
    write("notes.tmp1", now - std::chrono::hours(1));         // no leading dot
    write(".A.tmp1234567", now - std::chrono::hours(1));      // seven digits: not ours
    EXPECT_EQ(removeStaleTemporaries(dir.path(), now), (std::vector<std::string>{"CIELS.DAT"}));
    EXPECT_FALSE(fs::exists(dir / ".BEAMS.1.tmp123456"));
    EXPECT_FALSE(fs::exists(dir / ".CIELS.DAT.tmp42"));
    for (const char* kept : {".GEN.CST.tmp7", ".hidden", "notes.tmp1", ".A.tmp1234567"}) {
        EXPECT_TRUE(fs::exists(dir / kept)) << kept;
    }
    EXPECT_EQ(test::readBytes(dir / "BEAMS.1"), "whole");
}

TEST(FileLookup, FindsAFileWhateverItsCasePreferringTheExactName) {
    test::TempDir dir;
    test::writeBytes(dir / "GEN.CST", "x");
    test::writeBytes(dir / "LdCases.dat", "y");
    EXPECT_EQ(findFileNoCase(dir.path(), "gen.cst"), dir / "GEN.CST");
    EXPECT_EQ(findFileNoCase(dir.path(), "LDCASES.DAT"), dir / "LdCases.dat");
    EXPECT_EQ(findFileNoCase(dir.path(), "GEN.CS"), std::nullopt);
    EXPECT_EQ(findFileNoCase(dir / "nowhere", "GEN.CST"), std::nullopt);

    EXPECT_EQ(resolveNoCase(dir.path(), "gen.cst"), dir / "GEN.CST");
    EXPECT_EQ(resolveNoCase(dir.path(), "BMSETING.DAT"), dir / "BMSETING.DAT");

    // Create the other spellings first, so that a lookup that takes the first match of the
    // folder listing is likely to pick the wrong one.
    test::writeBytes(dir / "Gen.Cst", "a");
    test::writeBytes(dir / "gen.cst", "c");
    EXPECT_EQ(findFileNoCase(dir.path(), "gen.cst"), dir / "gen.cst");
    EXPECT_EQ(findFileNoCase(dir.path(), "Gen.Cst"), dir / "Gen.Cst");
    EXPECT_EQ(findFileNoCase(dir.path(), "GEN.CST"), dir / "GEN.CST");
}

TEST(FileLookup, UserTypedNamesStayInsideTheFolder) {
    using namespace std::string_view_literals;
    for (const std::string_view bad :
         {""sv, "."sv, ".."sv, "..."sv, "a/b"sv, "a\\b"sv, "c:"sv, "/"sv, "..\\up"sv, "a\0b"sv,
          "tab\there"sv, "bell\x07"sv, "del\x7f"sv}) {
        EXPECT_FALSE(isSafeFileComponent(bad)) << "accepted \"" << bad << "\"";
    }
    for (const std::string_view good : {"job"sv, "job.prj"sv, "Bldg 7 - East"sv, "C1"sv,
                                        ".hidden"sv, "a..b"sv, "\xF9\xEC\xE5\xED"sv /* Hebrew */}) {
        EXPECT_TRUE(isSafeFileComponent(good)) << "refused \"" << good << "\"";
    }
}

} // namespace
} // namespace orvak::core
