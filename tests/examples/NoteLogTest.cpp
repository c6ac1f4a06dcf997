// The monitor's notes, and the other pure parts of what the window draws.
#include "librarian/NoteLog.h"

#include <gmock/gmock.h>

#include "librarian/BankFile.h"
#include "librarian/FrameLayout.h"
#include "librarian/MessageShape.h"
#include "librarian/PatchSheet.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

MidiMoment At(DWORD time, BYTE status, BYTE data1, BYTE data2) {
    return {time, status, data1, data2, 0};
}

// "60:100-250" for a note that ended, "60:100-" for one that sounds.
std::vector<std::string> Shown(const NoteLog& log) {
    std::vector<std::string> notes;
    for (const Note& note : log.Notes())
        notes.push_back(std::to_string(note.pitch) + ":" + std::to_string(note.begin) + "-" +
                        (note.isSounding ? "" : std::to_string(note.end)));
    return notes;
}

TEST(NoteLog, NotesEndByNoteOffVelocityZeroRestrikeAndAllNotesOff) {
    NoteLog log;
    log.Add(At(100, 0x90, 60, 90));
    log.Add(At(110, 0x91, 60, 90)); // another channel
    log.Add(At(200, 0x80, 60, 0));
    log.Add(At(300, 0x90, 64, 90));
    log.Add(At(310, 0x90, 64, 50)); // struck again
    log.Add(At(320, 0x90, 64, 0));
    EXPECT_THAT(Shown(log), ElementsAre("60:100-200", "60:110-", "64:300-310", "64:310-320"));
    log.Add(At(400, 0xB1, 123, 0));
    EXPECT_EQ(Shown(log)[1], "60:110-400");
}

TEST(NoteLog, ForgetsWhatEndedAlsoWhenTheClockWrapsAround) {
    NoteLog log;
    log.Add(At(0xFFFFFF00, 0x90, 60, 90));
    log.Add(At(0xFFFFFF80, 0x80, 60, 0));
    log.Add(At(0xFFFFFFF0, 0x90, 72, 90));
    log.Add({0xFFFFFFF8, 0xF0, 0, 0, 18});
    log.ForgetBefore(0xFFFFFF40);
    EXPECT_EQ(log.Notes().size(), 2u);
    log.ForgetBefore(0x10);
    EXPECT_THAT(Shown(log), ElementsAre("72:4294967280-"));
    EXPECT_THAT(log.Sysex(), IsEmpty());
}

TEST(NoteLog, EventsAreSaidInWords) {
    EXPECT_EQ(DescribeMoment(At(0, 0x90, 60, 100)), "Note on C4, velocity 100, channel 1");
    EXPECT_EQ(DescribeMoment(At(0, 0x9F, 61, 0)), "Note off C#4, channel 16");
    EXPECT_EQ(DescribeMoment(At(0, 0xE0, 0, 0x40)), "Pitch bend 0, channel 1");
    EXPECT_EQ(DescribeMoment(At(0, 0xC2, 4, 0)), "Program 5, channel 3");
    EXPECT_EQ(DescribeMoment({0, 0xF0, 0, 0, 18}), "System Exclusive, 18 bytes");
    EXPECT_EQ(DescribeMoment(At(0, 0xF8, 0, 0)), "");
}

TEST(MessageShape, KeepsTheHighestByteOfEachColumn) {
    EXPECT_THAT(ShapeOf({0xF0, 0x43, 1, 9, 2, 3, 0xF7}, 2), ElementsAre(9, 3));
    EXPECT_THAT(ShapeOf({0xF0, 0x00, 0x20, 0x29, 5, 6, 0xF7}, 10), ElementsAre(5, 6));
    EXPECT_THAT(ShapeOf({0xF0, 0x43, 7}, 10), ElementsAre(7)); // cut short
    EXPECT_THAT(ShapeOf({0xF0, 0xF7}, 10), IsEmpty());
    EXPECT_THAT(ShapeOf({}, 10), IsEmpty());
}

bool Fills(const CRect& rect) {
    return rect.right > rect.left && rect.bottom > rect.top;
}

TEST(PatchSheet, SaysWhatIsLeftOut) {
    Bank bank;
    for (const char* name : {"Piano", "", "Organ"})
        bank.messages.push_back({{}, {"", "Voice", {}}, name});
    EXPECT_THAT(SheetLines(bank, 3), ElementsAre("1  Piano", "2  Voice", "3  Organ"));
    EXPECT_THAT(SheetLines(bank, 2), ElementsAre("1  Piano", "and 2 more"));
}

TEST(FrameLayout, SmallWindowsDoWithoutPanes) {
    const struct {
        int width, height;
        bool tree, detail, monitor;
    } rows[] = {{1060, 700, true, true, true},
                {1060, 480, true, true, false},
                {760, 700, true, false, true},
                {600, 380, false, false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.width);
        const FrameRects rects = LayOutFrame(row.width, row.height, {});
        EXPECT_EQ(Fills(rects.tree), row.tree);
        EXPECT_EQ(Fills(rects.detail), row.detail);
        EXPECT_EQ(Fills(rects.monitor), row.monitor);
        EXPECT_TRUE(Fills(rects.list) && Fills(rects.hex) && Fills(rects.status));
        EXPECT_EQ(rects.list.bottom, rects.hex.top);
        EXPECT_EQ(rects.list.right, row.width);
    }
    FrameParts editing;
    editing.editorHeight = 400;
    const FrameRects edited = LayOutFrame(1060, 700, editing);
    EXPECT_FALSE(Fills(edited.hex) || Fills(edited.detail));
    EXPECT_EQ(edited.editor.bottom - edited.editor.top, 400);
    EXPECT_EQ(edited.list.bottom, edited.editor.top);
    editing.editorHeight = 4000;
    EXPECT_TRUE(Fills(LayOutFrame(1060, 700, editing).list));

    FrameParts alone{false, false, false, false, false, false};
    const FrameRects rects = LayOutFrame(800, 600, alone);
    EXPECT_EQ(rects.list.bottom, 580);
    EXPECT_FALSE(Fills(rects.hex) || Fills(rects.header) || Fills(rects.find));
}

} // namespace
