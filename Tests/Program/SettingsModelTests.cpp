#include "Program/Program.h"
#include "TSY/SettingsModel.h"

namespace {

using Mode = CGDisplayMode;

/// Two displays, the second of which is main.
class Model : public Program {
protected:
    Model() {
        state.displays = {{.id = 1, .serial = 1, .modes = {Mode{1, 1280, 720, 1280, 60}}},
                          {.id = 2, .isMain = true, .serial = 2}};
        state.defaults = {{"seeded.10-20-1", true}, {"seeded.10-20-2", true}};
    }

    /// How often it told of a change since the last call.
    int signals() { return std::exchange(signals_, 0); }

    std::shared_ptr<tsy::SettingsModel> followed() {
        auto model = tsy::SettingsModel::make();
        model->subscribe([this] { ++signals_; });
        state.takeLog();
        return model;
    }

private:
    int signals_ = 0;
};

TEST_F(Model, TellsBeforeEachAssignmentAndDoesWhatItIsFor) {
    const auto model = followed();
    // clang-format off
    const std::vector<std::tuple<std::function<void()>, int, std::string>> rows{
        {[&] { model->setSelectedDisplayID(1); }, 2, "list modes of 1"},
        {[&] { model->setSelectedDisplayID(1); }, 1, ""},
        {[&] { model->incrementRevision(); }, 1, ""},
        {[&] { model->setLaunchAtLogin(false); }, 1, "unregister login item"},
        {[&] { model->setLaunchAtLogin(true); }, 1, "register login item"},
        {[&] { model->setChecksForUpdates(false); }, 1, "check only when told to"},
        {[&] { model->reloadDisplays(); }, 2, "list modes of 1"}};
    // clang-format on
    for (const auto& [assign, count, log] : rows) {
        assign();
        EXPECT_EQ(signals(), count) << log;
        EXPECT_EQ(state.takeLog(), log);
    }
    EXPECT_EQ(model->revision(), 1);
    std::string seen;
    model->subscribe([&] { seen += std::to_string(model->revision()); });
    model->incrementRevision();
    EXPECT_EQ(seen, "1") << "the signal comes before the change";
}

TEST_F(Model, KeepsTheSelectionWhileItsDisplayIsThereAndFindsAnotherOneAfterwards) {
    auto model = followed();
    EXPECT_EQ(model->selectedDisplayID(), 2U) << "the main one";
    model->setSelectedDisplayID(1);
    state.takeLog();
    // clang-format off
    const std::vector<std::tuple<std::function<void()>, CGDirectDisplayID, std::string>> rows{
        {[] { state.displays[0].currentMode = 9; }, 1, "list modes of 1"},
        {[] { state.displays.erase(state.displays.begin()); }, 2, "list modes of 2; list modes of 2"},
        {[] { state.displays = {{.id = 3, .serial = 2}, {.id = 4, .serial = 1}}; }, 3,
         "list modes of 3; list modes of 3"},
        {[] { state.displays.clear(); }, 0, ""}};
    // clang-format on
    std::int64_t revision = 0;
    for (const auto& [change, selected, log] : rows) {
        change();
        NSNotificationCenter::defaultCenter().post(tsy::displaysChanged);
        EXPECT_EQ(model->selectedDisplayID(), selected);
        EXPECT_EQ(state.takeLog(), "tessary.tsy.displaysChanged" + (log.empty() ? "" : "; " + log));
        EXPECT_EQ(model->revision(), ++revision);
    }
    EXPECT_TRUE(model->modes().empty());
    EXPECT_EQ(model->selectedDisplay(), std::nullopt);
    model.reset();
    NSNotificationCenter::defaultCenter().post(tsy::displaysChanged);
}

} // namespace
