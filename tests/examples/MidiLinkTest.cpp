#include "librarian/MidiLink.h"

#include <gmock/gmock.h>

#include "support/LogCapture.h"

TEST(MidiPorts, AreFoundByNameOrTheFirstIsTaken) {
    const std::vector<std::string> names = {"Synth", "Keys", "Synth"};
    EXPECT_EQ(PortNamed(names, "Keys"), 1u);
    EXPECT_EQ(PortNamed(names, "Synth"), 0u);
    EXPECT_EQ(PortNamed(names, "Gone"), 0u);
    EXPECT_EQ(PortNamed({}, "Gone"), 0u);
}

TEST(MidiPorts, OpenedPortTellsItsName) {
    LogCapture log;
    initCoreMIDI();
    {
        MidiLink link;
        EXPECT_EQ(link.OutputName(), "none");
        EXPECT_FALSE(link.CanSend());
        EXPECT_TRUE(link.OpenOutput("Gone"));
        EXPECT_TRUE(link.OpenInput("Gone"));
        EXPECT_EQ(link.OutputName(), MidiLink::Outputs().at(0));
        EXPECT_EQ(link.InputName(), MidiLink::Inputs().at(0));
        EXPECT_TRUE(link.CanSend());
    }
    destroyCoreMIDI();
    log.Ignore();
}
