// The run's pictures made while it goes on: each shot encoded the moment it is taken, the run
// held back while too many wait, and nothing left working or written after a stop.

#include <filesystem>

#include "RunFixture.h"
#include "run/ShotPipeline.h"
#include "testing/FakeImageCodec.h"

namespace zd::testing {
namespace {

using Strings = std::vector<std::string>;

// Timeline of the default run: de light captured at 5.1 s and dark at 5.7 s, then the
// relaunch into fr and its 0.6 s wait, fr light at 7.2 s and dark at 7.8 s.
class Pipeline : public RunFixture {
  protected:
    Pipeline() { env.pictureWorkers = &encoders; }

    Strings savedOrder() const {
        Strings order;
        for (const auto& shot : services.savedShots)
            order.push_back(shot.languageCode + " " + rawString(shot.mode));
        return order;
    }

    ManualWorkerPool encoders;
};

TEST_F(RunFixture, ShotsAreEncodedTheMomentTheyAreTaken) {
    std::vector<int> encodedAtCapture;
    services.onCall = [&](const std::string& entry) {
        if (entry.starts_with("captureWindow"))
            encodedAtCapture.push_back(services.encodeCount);
    };
    runToEnd();
    EXPECT_EQ(encodedAtCapture, (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(view->progress.statusMessage(), "Saved 4 shots to " + services.savedRoot + ".");
}

TEST_F(Pipeline, StopWritesNothingAndLeavesNoWorkBehind) {
    view->takeShots();
    clock.advance(5800ms);
    ASSERT_TRUE(encoders.runNext());  // de light encoded; de dark handed to the pool
    view->cancelCapture();
    ASSERT_TRUE(clock.runUntilIdle());

    EXPECT_EQ(view->progress.statusMessage(), "Stopped \u2014 2 shots captured but not saved.");
    EXPECT_FALSE(logged("saveAll"));
    EXPECT_FALSE(view->isWorking);
    // The job still queued when the run ended does nothing once it gets a worker.
    const std::size_t entries = log.entries().size();
    while (encoders.runNext()) {
    }
    ASSERT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(services.encodeCount, 1);
    EXPECT_EQ(log.entries().size(), entries);
}

TEST_F(Pipeline, RunWaitsForTheEncoderWhenTwoLanguagesOfShotsWait) {
    view->languages = {{"de", "German"}, {"fr", "French"}, {"it", "Italian"}};
    view->takeShots();
    ASSERT_TRUE(clock.runUntilIdle());
    // de and fr taken, none encoded: it is not captured while four raw shots wait.
    EXPECT_EQ(services.captureCount, 4);
    EXPECT_TRUE(view->isWorking);

    ASSERT_TRUE(encoders.runNext());
    ASSERT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(services.captureCount, 4);
    ASSERT_TRUE(encoders.runNext());  // two left waiting: room for it
    ASSERT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(services.captureCount, 6);

    while (encoders.runNext())
        ASSERT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(savedOrder(),
              (Strings{"de light", "de dark", "fr light", "fr dark", "it light", "it dark"}));
    EXPECT_EQ(view->progress.statusMessage(), "Saved 6 shots to " + services.savedRoot + ".");
}

TEST(ShotPipeline, FailedEncodingIsTheSaveFailureAndWritesNothing) {
    const auto root = std::filesystem::temp_directory_path() / "zd-pipeline-failed-encoding";
    std::filesystem::remove_all(root);
    FakeImageCodec codec;
    codec.failEncoding = true;
    InlineWorkerPool workers;
    ShotPipeline pipeline(workers, [&codec](CapturedShot shot) {
        return encodeShot(
            std::move(shot), [](const CapturedShot& s) { return s.image; }, codec);
    });
    for (const auto mode : {AppearanceMode::light, AppearanceMode::dark})
        pipeline.add({makeUUID(), "de", "German", mode, Image(4, 2)});

    const auto saved = writeEncoded(pipeline.take(), root, "");
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error(), OutputError::couldNotEncodePNG());
    EXPECT_FALSE(std::filesystem::exists(root / "de" / "light.png"));
    std::filesystem::remove_all(root);
}

}  // namespace
}  // namespace zd::testing
