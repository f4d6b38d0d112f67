// Tests of the project's parameter file: created when missing, record count from its length,
// and a folder in its place refused with a file error.
#include "shell/parameter_file.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::shell {
namespace {

TEST(ParameterFile, OpensOrCreatesAndCountsWholeRecords) {
    test::TempDir a;
    test::TempDir b;
    ParameterFile file;
    file.open(a.path());
    EXPECT_TRUE(file.isOpen());
    EXPECT_EQ(file.recordCount(), 0u);
    EXPECT_TRUE(std::filesystem::exists(a / "DEFPARAM.DAT"));

    // 500 bytes hold two whole 241-byte records; a file open before is closed first.
    test::writeBytes(b / "defparam.dat", std::string(500, 'x'));
    file.open(b.path());
    EXPECT_EQ(file.recordCount(), 2u);
    EXPECT_EQ(file.path(), b / "defparam.dat");
    file.close();
    EXPECT_FALSE(file.isOpen());

    std::filesystem::create_directory(a / "sub");
    std::filesystem::create_directory(a / "sub" / "DEFPARAM.DAT");
    EXPECT_THROW(file.open(a / "sub"), FileError);
}

} // namespace
} // namespace orvak::shell
