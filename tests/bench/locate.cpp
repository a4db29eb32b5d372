// SPDX-License-Identifier: MIT
// LOCATE from the button to the stand-in DAW: real keys over X11 under a window manager, real MMC
// over JACK.
#include "baretable.h"
#include "benchmarks.h"
#include "comparison.h"
#include "servers.h"
#include "shows.h"
#include "standin.h"
#include "timing.h"
#include "windowdriver.h"

namespace {

constexpr Target kTarget{1.005};
constexpr unsigned int kKeyUs = 30'000;    // Between key down and key up.
constexpr unsigned int kPauseUs = 100'000; // After a key, and after MMC Stop in Pro Tools by bars.
constexpr int kLocates = 11;
constexpr int kRedraws = 101;
constexpr int kNoMode = 9; // Of no DAW: LOCATE does all but type.

void pause(bool pausesAfterStop, int keys)
{
    if (pausesAfterStop) {
        QKeyEventSend::pause(kPauseUs);
    }
    for (int i = 0; i < keys; ++i) {
        QKeyEventSend::pause(kKeyUs);
        QKeyEventSend::pause(kPauseUs);
    }
}

void measureLocate(benchmark::State& state, const QString& dawName, int mode, int keys)
{
    const WindowManager windowManager;
    StandIn daw(dawName);
    EditData data = sampleData();
    data.Mode = mode;
    data.MidiOutPort = StandIn::kMmcPort;
    if (!windowManager.isRunning() || !daw.isRunning()) {
        throw std::runtime_error("the window manager or the stand-in DAW does not start");
    }
    const WindowDriver velt(data);
    Comparison ms;
    for (int i = 0; i < kLocates; ++i) {
        ms.ours(wallMsOf([&] { velt.button("LOCATE")->click(); }));
        ms.floor(wallMsOf([&] { pause(mode == kModeProToolsBars, keys); }));
        paintAll();
    }
    if (daw.texts("located").size() != kLocates) {
        throw std::runtime_error("the stand-in DAW was not located");
    }
    ms.report(state, kTarget);
}

void replaceRow(QTableWidget* table, int row, const EditDataSet& entry, const QColor& mark = {})
{
    table->removeRow(row);
    insertBareEntry(table, row, entry);
    if (mark.isValid()) {
        QFont emphasis;
        emphasis.setBold(true);
        emphasis.setItalic(true);
        for (int column = 0; column < table->columnCount(); ++column) {
            table->item(row, column)->setForeground(mark);
            table->item(row, column)->setFont(emphasis);
        }
    }
}

// The marked rows become plain, two others red and blue.
void measureRedraw(benchmark::State& state)
{
    StandIn daw("Pro Tools");
    EditData data = showsOf(100);
    data.Mode = kNoMode;
    if (!daw.isRunning()) {
        throw std::runtime_error("the stand-in DAW does not start");
    }
    const WindowDriver velt(data);
    const auto& setList = data.ShowList.front().SetList;
    const auto bare = makeBareTable(*velt.table);
    bare->move(velt.window.x() + velt.window.width(), 0);
    fillBareSetList(bare.get(), setList);
    bare->show();
    Comparison ms;
    for (int i = 0; i < kRedraws; ++i) {
        const int from = i % 2 == 0 ? 0 : 4;
        const int to = 4 - from;
        velt.select(to);
        paintAll();
        ms.ours(cpuMsOf([&] {
            velt.button("LOCATE")->click();
            paintAll();
        }));
        ms.floor(cpuMsOf([&] {
            replaceRow(bare.get(), from, setList[from]);
            replaceRow(bare.get(), from + 1, setList[from + 1]);
            replaceRow(bare.get(), to, setList[to], data.SendTextColor);
            replaceRow(bare.get(), to + 1, setList[to + 1], data.NextTextColor);
            bare->setCurrentCell(to, 0);
            paintAll();
        }));
    }
    ms.report(state, std::nullopt);
}

} // namespace

void addLocate()
{
    const auto addMode = [](const char* name, const char* daw, int mode, int keys) {
        add(std::string("LOCATE, ") + name + " (ms)",
            [=](benchmark::State& state) { measureLocate(state, daw, mode, keys); });
    };
    // To the first song of the sample show: bar 12, marker 1.
    addMode("Pro Tools by bars", "Pro Tools", kModeProToolsBars, 4);
    addMode("Pro Tools by markers", "Pro Tools", kModeProToolsMarker, 3);
    addMode("Studio One by bars", "Studio One", kModeStudioOneBars, 4);
    addMode("Studio One by markers", "Studio One", kModeStudioOneMarker, 3);
    add("rows of a LOCATE, painted (ms)", measureRedraw);
}
