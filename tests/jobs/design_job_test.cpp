// The design job runner with made-up elements: progress and status per element, one element's
// failure leaving its outputs and items as they were while the run goes on, cancelling.
#include "jobs/design_job.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <vector>

#include "bars/steel_store.h"
#include "core/file_util.h"
#include "core/output_batch.h"
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
                                 std::string(last ? "last" : "sheet") + m_run + "\r\n"});
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
    // The files of the project folder named as a temporary of a save or of a run.
    std::vector<std::string> temporaries() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(project())) {
            const std::string name = entry.path().filename().string();
            if (name.find(".tmp") != std::string::npos || name.find(".run") != std::string::npos) {
                found.push_back(name);
            }
        }
        return found;
    }
    // Runs `body` in a child process that ends by being killed (SIGKILL) or by _exit, with
    // no destructor run: as a program stopped by the user or the power. True when it died
    // of the kill or exited 0.
    static bool inKilledChild(const std::function<void()>& body) {
        const pid_t child = ::fork();
        if (child == 0) {
            body();
            ::_exit(0);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) ||
               (WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    std::vector<JobElement> elements(std::size_t n, float quantity) {
        std::vector<JobElement> list;
        for (std::size_t i = 1; i <= n; ++i) {
            list.push_back(element(static_cast<int>(i), quantity));
        }
        return list;
    }

    std::string m_run; ///< written into every sheet: which run made it
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
    // Each element's outcome is kept beside its items, with the reason of a failure.
    const std::vector<bars::DesignState> states = db.designStates();
    ASSERT_EQ(states.size(), 3u);
    EXPECT_EQ(states[0].status, bars::DesignState::Status::Designed);
    EXPECT_EQ(states[1].status, bars::DesignState::Status::NotDesigned);
    EXPECT_EQ(states[1].failures, "The section is too small.");
    EXPECT_EQ(states[1].when.size(), 16u); // "yyyy-mm-dd hh:mm"
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
    EXPECT_TRUE(temporaries().empty());
}

// A run killed anywhere leaves the project as one run or the other made it: the items in the
// store and the sheets beside it always belong together.
TEST_F(DesignJob, AKilledRunLeavesTheItemsAndSheetsOfOneRunTogether) {
    runDesignJob(project(), elements(60, 4));

    // Killed half way: nothing of the second run is kept.
    m_run = " second";
    ASSERT_TRUE(inKilledChild([&] {
        JobObserver observer;
        observer.finished = [](std::size_t k, std::size_t, const ElementReport&) {
            if (k == 40) {
                ::raise(SIGKILL);
            }
        };
        runDesignJob(project(), elements(60, 7), observer);
    }));
    // Its staged sheets are orphans: the next open of the store removes them.
    EXPECT_FALSE(temporaries().empty());
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        EXPECT_EQ(db.itemCount(), 60u);
        EXPECT_EQ(db.findItem(bars::makeMainKey(3, 1, 1, 1, 0))->quantity, 4.0f);
        EXPECT_EQ(db.findItem(bars::makeMainKey(3, 1, 40, 1, 0))->quantity, 4.0f);
        EXPECT_EQ(db.designStates().size(), 60u);
    }
    EXPECT_TRUE(temporaries().empty());
    EXPECT_EQ(test::readBytes(project() / "E1.Analy"), "sheet\r\n");

    // Killed after the store took the run, before any sheet was renamed (the steps of the
    // runner's end, stopped where a kill would): the next open puts the sheets in place.
    ASSERT_TRUE(inKilledChild([&] {
        core::OutputBatch batch;
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        db.beginGroup();
        for (int number : {1, 2}) {
            const core::OutputFile sheet{project() / ("E" + std::to_string(number) + ".Analy"),
                                         "third\r\n"};
            bars::SteelItem item = *db.findItem(bars::makeMainKey(3, 1, number, 1, 0));
            item.quantity = 9.0f;
            db.replaceElementItems(bars::ElementKind::Extra, 1, static_cast<std::int16_t>(number),
                                   {item}, [&] { batch.stage({&sheet, 1}); });
        }
        db.recordPendingOutputs(batch.prepare());
        db.commitGroup();
        ::raise(SIGKILL);
    }));
    EXPECT_EQ(test::readBytes(project() / "E1.Analy"), "sheet\r\n"); // not yet in place
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        EXPECT_EQ(db.findItem(bars::makeMainKey(3, 1, 2, 1, 0))->quantity, 9.0f);
    }
    EXPECT_EQ(test::readBytes(project() / "E1.Analy"), "third\r\n");
    EXPECT_EQ(test::readBytes(project() / "E2.Analy"), "third\r\n");
    EXPECT_EQ(test::readBytes(project() / "E3.Analy"), "sheet\r\n");

    EXPECT_TRUE(temporaries().empty());
}

// Another program opening the store while a run is under way leaves the run's staged sheets
// alone: the run holds the store's write lock until its commit.
TEST_F(DesignJob, AnOpenDuringARunLeavesItsStagedSheetsAlone) {
    bars::IronDatabase running = bars::OpenIronDatabase(project());
    running.beginGroup();
    core::OutputBatch batch;
    const core::OutputFile sheet{project() / "E1.Analy", "staged\r\n"};
    batch.stage({&sheet, 1});
    const auto staged = temporaries();
    ASSERT_EQ(staged.size(), 1u);
    bars::IronDatabase::open(project(), 0); // another program's open, while the run holds it
    EXPECT_EQ(temporaries(), staged);
    running.recordPendingOutputs(batch.prepare());
    running.commitGroup();
    batch.commit();
    EXPECT_EQ(test::readBytes(project() / "E1.Analy"), "staged\r\n");
}

// The store loses the run's transaction (its file may not grow: a full disk): the run stops
// with why, and every element keeps its earlier sheet and items.
TEST_F(DesignJob, AStoreThatCannotGrowStopsTheRunAndKeepsNothingOfIt) {
    runDesignJob(project(), elements(3, 4));
    const auto big = [this](int number) {
        JobElement e = element(number, 7);
        auto plain = e.design;
        e.design = [plain, number](bool last) {
            ElementOutputs out = plain(last);
            // Many items with long keys: the store's log outgrows the limit on file size.
            for (int mark = 2; mark <= 400; ++mark) {
                bars::SteelItem item = out.items.front();
                item.mark = static_cast<std::int16_t>(mark);
                item.mainKey = bars::makeMainKey(3, 1, number, mark, 0);
                item.description = std::string(25, 'd');
                out.items.push_back(item);
            }
            return out;
        };
        return e;
    };
    const auto before = fs::file_size(project() / "Iron.db");
    m_run = " second";
    std::string message;
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{before + 16384, before + 16384};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            runDesignJob(project(), {big(1), big(2), big(3)});
        } catch (const FileError& e) {
            const bool told = std::string(e.what()).find("nothing of it was kept") !=
                              std::string::npos;
            ::_exit(told ? 0 : 2);
        }
        ::_exit(1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "1: the run did not stop; 2: it did not say why";
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_EQ(db.itemCount(), 3u);
    EXPECT_EQ(db.findItem(bars::makeMainKey(3, 1, 1, 1, 0))->quantity, 4.0f);
    EXPECT_EQ(test::readBytes(project() / "E1.Analy"), "sheet\r\n");
    EXPECT_TRUE(temporaries().empty());
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
