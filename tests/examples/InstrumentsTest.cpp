#include "librarian/Instruments.h"

#include <ostream>

#include "SettingsHome.h"
#include "librarian/BankFile.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

bool operator==(const Instrument& a, const Instrument& b) {
    return a.name == b.name && a.maker == b.maker && a.messages == b.messages &&
           a.lastBank == b.lastBank;
}

void PrintTo(const Instrument& instrument, std::ostream* out) {
    *out << instrument.name << " by " << instrument.maker << ", " << instrument.messages << " in "
         << instrument.lastBank;
}

namespace {

class InstrumentList : public SettingsHome {};

const Bank& MixedBank() {
    static const Bank s_bank = SplitBank({
        0xF0, 0x43, 0x02, 0,    0,    0,    0xF7,                // Yamaha, device 02
        0xF0, 0x7E, 0,    6,    1,    0xF7,                      // for everybody
        0xF0, 0x41, 0x10, 0x16, 0x12, 5,    1,    2, 0x78, 0xF7, // Roland
        0xF0, 0x43, 0x12, 1,    2,    3,    0xF7,                // Yamaha again
    });
    return s_bank;
}

const Instrument kYamaha = {"Yamaha, device 02", "Yamaha", 2, "/mixed.syx"};
const Instrument kRoland = {"Roland, model 16, device 10", "Roland", 1, "/mixed.syx"};

} // namespace

TEST_F(InstrumentList, IsRememberedInTheRegistry) {
    EXPECT_THAT(LoadInstruments(), IsEmpty());
    std::vector<Instrument> known;
    EXPECT_TRUE(RememberInstruments(known, MixedBank(), "/mixed.syx"));
    EXPECT_THAT(known, ElementsAre(kYamaha, kRoland));
    Reload();
    EXPECT_THAT(LoadInstruments(), ElementsAre(kYamaha, kRoland));
    EXPECT_THAT(m_home.Read(kRegistry),
                HasSubstr("[Software\\VMCore\\Librarian\\Instruments\\Yamaha, device 02]\r\n"
                          "Maker=Yamaha\r\nMakerType=2\r\nMessages=2\r\nMessagesType=1\r\n"
                          "LastBank=/mixed.syx\r\nLastBankType=2\r\n"));
}

TEST_F(InstrumentList, NewBankReplacesWhatIsKnownOfItsInstruments) {
    std::vector<Instrument> known;
    RememberInstruments(known, MixedBank(), "/mixed.syx");
    const Bank one = SplitBank({0xF0, 0x43, 0x02, 0, 0, 0, 0xF7});
    EXPECT_TRUE(RememberInstruments(known, one, "/one.syx"));
    const Instrument yamaha = {kYamaha.name, "Yamaha", 1, "/one.syx"};
    EXPECT_THAT(known, ElementsAre(yamaha, kRoland));
    EXPECT_THAT(LoadInstruments(), ElementsAre(yamaha, kRoland));
}

TEST_F(InstrumentList, BankThatTheRegistryCannotHoldIsNoLastBank) {
    std::vector<Instrument> known;
    RememberInstruments(known, MixedBank(), "/mixed;1.syx");
    EXPECT_EQ(known.at(0).lastBank, "");
    EXPECT_EQ(LoadInstruments().at(0).lastBank, "");
    RememberInstruments(known, MixedBank(), "/mixed.syx");
    RememberInstruments(known, MixedBank(), "/" + std::string(246, 'x')); // "LastBank=" and 247
    Reload();
    EXPECT_THAT(LoadInstruments(), ElementsAre(kYamaha, kRoland));
}

TEST_F(InstrumentList, BankForEverybodyHasNone) {
    std::vector<Instrument> known;
    EXPECT_FALSE(RememberInstruments(known, SplitBank({0xF0, 0x7E, 0, 6, 1, 0xF7}), "/id.syx"));
    EXPECT_THAT(known, IsEmpty());
}

TEST_F(InstrumentList, EditedRegistryIsReadWithCare) {
    Reload();
    m_home.Write(kRegistry, "[Software\\VMCore\\Librarian\\Instruments\\Odd]\r\n"
                            "Maker=7\r\nMakerType=1\r\nMessages=many\r\n"
                            "[Software\\VMCore\\Librarian\\Instruments\\Odd\\Deeper]\r\nMaker=X\r\n"
                            "[Software\\VMCore\\Librarian\\Instruments]\r\nMaker=Y\r\n");
    EXPECT_THAT(LoadInstruments(), ElementsAre(Instrument{"Odd", "", 0, ""}));
}
