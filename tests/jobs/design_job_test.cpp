// The design job runner with made-up elements: progress and status per element, one element's
// failure leaving its outputs and items as they were while the run goes on, cancelling.
#include "jobs/design_job.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bars/steel_store.h"
#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::jobs {
namespace {

namespace fs = std::filesystem;

class DesignJob : public ::testing::Test {
protected:
    void SetUp() override { fs::create_directories(project()); }
    fs::path project() const { return m_dir / "Run.prj"; }

    // An element whose design writes one sheet and one bar item of `quantity` bars, or
    // throws the error given.
    JobElement element(int number, float quantity, std::string error = {}) {
        JobElement e;
        e.kind = "test element";
        e.floor = 1;
        e.number = number;
        e.name = "E" + std::to_string(number);
        e.design = [this, number, quantity, error](bool last) {
            if (!error.empty()) {
                throw InputError(error);
            }
            ElementOutputs out;
            out.report.status = ElementStatus::Designed;
            out.files.push_back({project() / ("E" + std::to_string(number) + ".Analy"),
                                 std::string(last ? "last\r\n" : "sheet\r\n")});
            out.recordsSteel = true;
            out.steelKind = bars::ElementKind::Extra;
            bars::SteelItem item;
            item.mainKey = bars::makeMainKey(3, 1, number, 1, 0);
            item.element = "E" + std::to_string(number);
            item.slab = 1;
            item.beam = static_cast<std::int16_t>(number);
            item.mark = 1;
            item.general = 3;
            item.quantity = quantity;
            out.items.push_back(item);
            return out;
        };
        return e;
    }
    test::TempDir m_dir;
};

TEST_F(DesignJob, ReportsEachElementAndKeepsGoingPastAFailure) {
    std::vector<std::string> seen;
    JobObserver observer;
    observer.starting = [&](std::size_t k, std::size_t n, const JobElement& e) {
        seen.push_back("start " + std::to_string(k) + "/" + std::to_string(n) + " " + e.name);
    };
    observer.finished = [&](std::size_t k, std::size_t n, const ElementReport& r) {
        seen.push_back("done " + std::to_string(k) + "/" + std::to_string(n) + " " +
                       (r.status == ElementStatus::Designed ? "ok" : r.failures.at(0)));
    };
    const JobResult r = runDesignJob(
        project(), {element(1, 4), element(2, 5, "The section is too small."), element(3, 6)},
        observer);
    EXPECT_EQ(seen, (std::vector<std::string>{"start 1/3 E1", "done 1/3 ok", "start 2/3 E2",
                                              "done 2/3 The section is too small.", "start 3/3 E3",
                                              "done 3/3 ok"}));
    ASSERT_EQ(r.elements.size(), 3u);
    EXPECT_EQ(r.failing(), 1u);
    EXPECT_FALSE(r.cancelled);
    EXPECT_EQ(test::readBytes(project() / "E1.Analy"), "sheet\r\n");
    EXPECT_EQ(test::readBytes(project() / "E3.Analy"), "last\r\n");
    EXPECT_FALSE(fs::exists(project() / "E2.Analy"));
    EXPECT_EQ(r.elements[0].files, (std::vector<fs::path>{project() / "E1.Analy"}));
    EXPECT_EQ(r.elements[0].steelItems, 1u);
    EXPECT_TRUE(r.elements[1].files.empty());

    bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_EQ(db.itemCount(), 2u);
    // The store is one plain file again once the run is over.
    EXPECT_FALSE(fs::exists(project() / "Iron.db-wal"));
}

TEST_F(DesignJob, AFailedElementKeepsItsEarlierOutputsAndItems) {
    runDesignJob(project(), {element(1, 4), element(2, 5)});
    // Element 1 again, now failing, and element 2 with 7 bars instead of 5.
    const JobResult again =
        runDesignJob(project(), {element(1, 9, "Cannot be analysed."), element(2, 7)});
    EXPECT_EQ(again.elements[0].status, ElementStatus::NotDesigned);
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_EQ(db.findItem(bars::makeMainKey(3, 1, 1, 1, 0))->quantity, 4.0f);
    EXPECT_EQ(db.findItem(bars::makeMainKey(3, 1, 2, 1, 0))->quantity, 7.0f);
    EXPECT_EQ(test::readBytes(project() / "E1.Analy"), "sheet\r\n");
    EXPECT_EQ(test::readBytes(project() / "E2.Analy"), "last\r\n");
    for (const auto& entry : fs::directory_iterator(project())) {
        EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos)
            << "a temporary was left: " << entry.path();
    }
}

TEST_F(DesignJob, AnOldStoreNotYetImportedStopsTheRunBeforeANewOneIsMade) {
    test::writeBytes(project() / "Iron.MDB", "an Access file of an older version");
    try {
        runDesignJob(project(), {element(1, 4)});
        FAIL() << "a design started a new store beside Iron.MDB";
    } catch (const InputError& e) {
        EXPECT_NE(std::string(e.what()).find("Iron.MDB"), std::string::npos) << e.what();
    }
    EXPECT_FALSE(fs::exists(project() / "Iron.db"));
    EXPECT_FALSE(fs::exists(project() / "E1.Analy"));
}

TEST_F(DesignJob, CancellingKeepsWhatIsDone) {
    int asked = 0;
    JobObserver observer;
    observer.cancelRequested = [&] { return ++asked > 1; };
    const JobResult r = runDesignJob(project(), {element(1, 4), element(2, 5)}, observer);
    EXPECT_TRUE(r.cancelled);
    ASSERT_EQ(r.elements.size(), 1u);
    EXPECT_TRUE(fs::exists(project() / "E1.Analy"));
    EXPECT_FALSE(fs::exists(project() / "E2.Analy"));
    EXPECT_EQ(bars::OpenIronDatabase(project()).itemCount(), 1u);
}

} // namespace
} // namespace orvak::jobs
