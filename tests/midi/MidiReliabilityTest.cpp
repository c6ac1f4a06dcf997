// Many ports and threads at once.
#include "busyPorts.h"

#include <array>

namespace {

class MidiReliability : public MidiSystemTest {};

/// As many outputs as inputs, wired one to one.
vm::LoopbackSetup Pairs(vm::MidiId count) {
    vm::LoopbackSetup setup;
    for (vm::MidiId i = 1; i <= count; ++i) {
        setup.objects.push_back({i, vm::MidiObjectKind::Destination, "Out"});
        setup.objects.push_back({count + i, vm::MidiObjectKind::Source, "In"});
        setup.wires.push_back({i, count + i});
    }
    return setup;
}

} // namespace

TEST_F(MidiReliability, FourOutputsAndFourInputsAtOnce) {
    Start(Pairs(4));
    std::array<MidiRecorder, 4> recorders;
    std::array<HMIDIOUT, 4> outs = {};
    for (UINT i = 0; i < outs.size(); ++i) {
        OpenIn(recorders[i], i);
        outs[i] = OpenOut(i);
    }
    ExpectWholeTraffic(outs, recorders);
}

TEST_F(MidiReliability, PortsOpenAndCloseTenThousandTimesWhileTrafficFlows) {
    Start();
    OpenAndCloseInTraffic(OpenOut(), 0, 10'000);
    destroyCoreMIDI();
    m_log.Ignore(); // lists on their way to a closed port are reported
}
