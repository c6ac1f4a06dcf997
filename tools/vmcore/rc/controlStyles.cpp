// The tables of all classes, and which is for which control.
#include "rc/controlStyles.h"

#include <array>
#include <utility>

#include "rc/styleTable.h"

namespace vm::rc {
namespace {

using namespace win;

// What every control may have.
constexpr Style kCommon =
    kChild | kVisible | kDisabled | kClipSiblings | kClipChildren | kGroup | kTabStop;
constexpr Style kScrolls = kVScroll | kHScroll;

constexpr StyleNote kBoxNotes[] = {
    {kBsIcon | kBsBitmap, "the program sets the picture, which is beside the text"},
    {kBsMultiline, "the text is not wrapped"},
    {kBsLeft | kBsRight | kBsTop | kBsBottom, "the text is where the desktop has it"},
};
constexpr StyleTable kPushButton = {
    "BS_", kCommon | kBsTypes | kBsLeftText | kBsPushLike | kBsNotify | kBsFlat, kBoxNotes};
constexpr StyleTable kCheck = {"BS_", kCommon | kBsTypes | kBsLeftText | kBsPushLike | kBsNotify,
                               kBoxNotes};
constexpr StyleTable kGroupFrame = {"BS_", kCommon | kBsTypes | kBsLeft | kBsRight | kBsTop |
                                               kBsNotify | kBsMultiline};

constexpr Style kTyped = kCommon | kBorder | kEsUpper | kEsLower | kEsNumber | kEsReadOnly |
                         kEsAutoHScroll | kEsAutoVScroll | kEsWantReturn;
constexpr StyleTable kLine = {"ES_", kTyped | kEsCenter | kEsRight | kEsPassword};
constexpr StyleNote kLinesNotes[] = {
    {kEsCenter | kEsRight, "the lines are aligned to the left"},
    {kEsPassword, "what is typed is shown"},
};
constexpr StyleTable kLines = {"ES_", kTyped | kScrolls | kEsMultiline | kEsNoHideSel, kLinesNotes};
constexpr StyleNote kRichNotes[] = {
    {kEsCenter | kEsRight, "the lines are aligned to the left"},
    {kEsDisableNoScroll, "scroll bars come and go", "ES_DISABLENOSCROLL"},
};
constexpr Style kRich = kCommon | kBorder | kScrolls | kEsReadOnly | kEsAutoHScroll |
                        kEsAutoVScroll | kEsWantReturn | kEsSunken | kEsSaveSel;
constexpr Style kRichOwn = 0xFFFF | kEsNoIme | kEsVertical | kEsSelectionBar;
constexpr StyleTable kRichLine = {"ES_", kRich | kEsCenter | kEsRight | kEsPassword,
                                  std::span(kRichNotes).last(1), kRichOwn};
constexpr StyleTable kRichLines = {"ES_", kRich | kEsMultiline | kEsNoHideSel, kRichNotes,
                                   kRichOwn};

constexpr Style kOfPictures = kSsRealSize | kSsRealSizeImage | kSsRightJust;
constexpr StyleNote kTextNotes[] = {
    {kSsNotify, "clicks are not reported"},
    {kSsEllipsis, "a long text is cut without dots"},
};
constexpr StyleTable kText = {
    "SS_", kCommon | kBorder | kSsTypes | kOfPictures | kSsNoPrefix | kSsCenterImage | kSsSunken,
    kTextNotes};
constexpr StyleTable kPicture = {
    "SS_", kCommon | kBorder | kSsTypes | kOfPictures | kSsNoPrefix | kSsCenterImage | kSsSunken,
    std::span(kTextNotes).first(1)};
constexpr StyleTable kOwnStatic = {"SS_", kCommon | kSsTypes | kOfPictures | kSsNoPrefix |
                                              kSsNotify | kSsCenterImage};
constexpr StyleTable kFrame = {"SS_", kCommon | kSsTypes | kOfPictures | kSsNoPrefix,
                               std::span(kTextNotes).first(1)};

constexpr StyleNote kListBoxNotes[] = {
    {kLbsSort, "never sorted: add the strings in order"},
    {kLbsOwnerDraw, "drawn by the desktop, as texts"},
    {kLbsMultiColumn, "one column"},
};
constexpr StyleTable kListBox = {"LBS_",
                                 kCommon | kBorder | kScrolls | kLbsNotify | kLbsMultipleSel |
                                     kLbsHasStrings | kLbsNoIntegralHeight | kLbsExtendedSel |
                                     kLbsDisableNoScroll | kLbsNoSel,
                                 kListBoxNotes};

constexpr StyleNote kComboBoxNotes[] = {
    {kCbsOwnerDraw, "drawn by the desktop, as texts"},
    {kCbsUpper | kCbsLower, "letters stay as they are typed"},
};
constexpr StyleTable kComboBox = {"CBS_",
                                  kCommon | kVScroll | kCbsTypes | kCbsAutoHScroll | kCbsSort |
                                      kCbsHasStrings | kCbsNoIntegralHeight,
                                  kComboBoxNotes};

constexpr StyleNote kScrollBarNotes[] = {
    {kSbsNearAlign, "as thick as the script has it", "SBS_TOPALIGN, SBS_LEFTALIGN"},
    {kSbsFarAlign, "as thick as the script has it", "SBS_BOTTOMALIGN, SBS_RIGHTALIGN"},
};
constexpr StyleTable kScrollBar = {"SBS_", kCommon | kSbsVert, kScrollBarNotes};

constexpr StyleNote kSliderNotes[] = {{kTbsEnableSelRange, "no range is marked"}};
constexpr StyleTable kSlider = {"TBS_",
                                kCommon | kTbsAutoTicks | kTbsVert | kTbsTop | kTbsBoth |
                                    kTbsNoTicks | kTbsReversed | kTbsTransparent,
                                kSliderNotes};
constexpr StyleTable kArrows = {"UDS_", kCommon | kUdsWrap | kUdsSetBuddyInt | kUdsAlignRight |
                                            kUdsAlignLeft | kUdsAutoBuddy | kUdsArrowKeys |
                                            kUdsHorz | kUdsNoThousands | kUdsHotTrack};
// Resource editors give it a border by themselves.
constexpr StyleTable kProgress = {"PBS_", kCommon | kBorder | kPbsSmooth | kPbsVertical |
                                              kPbsMarquee | kPbsSmoothReverse};

constexpr StyleNote kListNotes[] = {
    {kLvsSort, "sorted by a click on a header only"},
    {kLvsEditLabels, "texts cannot be edited in place"},
    {kLvsOwnerDraw, "drawn by the desktop"},
    {kLvsOwnerData, "rows are inserted, their texts asked for"},
    {kLvsNoSortHeader, "a click on a header sorts"},
};
constexpr StyleTable kList = {"LVS_",
                              kCommon | kBorder | kScrolls | kLvsTypes | kLvsSingleSel |
                                  kLvsShowSelAlways | kLvsShareImageLists | kLvsIconsOnly |
                                  kLvsNoScroll | kLvsNoHeader,
                              kListNotes};

constexpr StyleNote kTreeNotes[] = {{kTvsEditLabels, "texts cannot be edited in place"}};
constexpr StyleTable kTree = {"TVS_",
                              kCommon | kBorder | kScrolls | kTvsHasButtons | kTvsHasLines |
                                  kTvsLinesAtRoot | kTvsDisableDragDrop | kTvsShowSelAlways |
                                  kTvsNoToolTips | kTvsCheckBoxes | kTvsFullRowSelect |
                                  kTvsNoScroll | kTvsNoHScroll,
                              kTreeNotes};

constexpr StyleNote kTabNotes[] = {
    {kTcsBottom | kTcsVertical | kTcsButtons | kTcsMultiLine | kTcsOwnerDraw,
     "tabs at the top, in one row, drawn by the desktop"}};
constexpr StyleTable kTabs = {"TCS_", kCommon | kTcsHotTrack | kTcsRaggedRight | kTcsFocusNever,
                              kTabNotes};

constexpr StyleNote kDateNotes[] = {
    {kDtsShowNone, "there is always a date"},
    {kDtsRightAlign, "the calendar opens at the left"},
};
constexpr StyleTable kDate = {
    "DTS_", kCommon | kBorder | kDtsUpDown | kDtsLong | kDtsTime | kDtsCentury, kDateNotes};

constexpr StyleTable kLink = {"LWS_", kCommon | kLwsTransparent | kLwsNoPrefix | kLwsRight};
constexpr StyleTable kBorderedField = {"", kCommon | kBorder};

// Classes of which the program draws all: nothing hears of their styles, whose names are known.
constexpr StyleTable kCalendar = {"MCS_", kCommon}, kAnimation = {"ACS_", kCommon},
                     kHeader = {"HDS_", kCommon}, kToolBar = {"TBSTYLE_", kCommon},
                     kOther = {"", kCommon};

const StyleTable& ButtonTable(const Control& control) {
    const Style type = control.style & kBsTypes;
    if (type == kGroupBox) return kGroupFrame;
    const bool isBox = (type >= kCheckBox && type <= kAuto3State) || type == kAutoRadio;
    return isBox && !(control.style & kBsPushLike) ? kCheck : kPushButton;
}

const StyleTable& EditTable(const Control& control) {
    return control.style & kEsMultiline ? kLines : kLine;
}

const StyleTable& RichTable(const Control& control) {
    return control.style & kEsMultiline ? kRichLines : kRichLine;
}

const StyleTable& StaticTable(const Control& control) {
    const Style type = control.style & kSsTypes;
    if (type == kUserItem || type == kStaticOwnerDraw || type == kEnhMetaFile) return kOwnStatic;
    if (type == kIcon || type == kBitmap) return kPicture;
    const bool isFrame = type >= kBlackRect && type <= kWhiteFrame;
    return isFrame || type >= kEtchedHorz ? kFrame : kText;
}

using Choose = const StyleTable& (*)(const Control& control);
template <const StyleTable& Table>
const StyleTable& Only(const Control&) {
    return Table;
}

constexpr std::array<std::pair<std::string_view, Choose>, 25> kClasses = {{
    {"button", ButtonTable},
    {"edit", EditTable},
    {"static", StaticTable},
    {"listbox", Only<kListBox>},
    {"combobox", Only<kComboBox>},
    {"comboboxex32", Only<kComboBox>},
    {"scrollbar", Only<kScrollBar>},
    {"msctls_trackbar32", Only<kSlider>},
    {"msctls_updown32", Only<kArrows>},
    {"msctls_progress32", Only<kProgress>},
    {"syslistview32", Only<kList>},
    {"systreeview32", Only<kTree>},
    {"systabcontrol32", Only<kTabs>},
    {"sysdatetimepick32", Only<kDate>},
    {"syslink", Only<kLink>},
    {"richedit", RichTable},
    {"richedit20a", RichTable},
    {"richedit20w", RichTable},
    {"richedit50w", RichTable},
    {"msctls_hotkey32", Only<kBorderedField>},
    {"sysipaddress32", Only<kBorderedField>},
    {"sysmonthcal32", Only<kCalendar>},
    {"sysanimate32", Only<kAnimation>},
    {"sysheader32", Only<kHeader>},
    {"toolbarwindow32", Only<kToolBar>},
}};

const StyleTable& TableOf(const Control& control) {
    for (const auto& [known, choose] : kClasses)
        if (control.windowClass == known) return choose(control);
    return kOther;
}

// Without alignments that are the desktop's own: both bits are the middle.
Style WithoutUsualPlaces(Style style, const StyleTable& table) {
    const Style across = style & (kBsLeft | kBsRight), down = style & (kBsTop | kBsBottom);
    if (down == (kBsTop | kBsBottom)) style &= ~down;
    if (across == (&table == &kCheck ? kBsLeft : kBsLeft | kBsRight)) style &= ~across;
    return style;
}

constexpr StyleNote kExNotes[] = {
    {kExRight | kExRtlReading | kExLayoutRtl, "not laid out from right to left"},
    {kExAcceptFiles, "the program calls DragAcceptFiles"},
};

// Frames are for those who have one of their own or take it from a style.
Style QuietExtended(const StyleTable& table) {
    constexpr Style kFrames = kExClientEdge | kExStaticEdge;
    const bool isStatic = table.prefix == "SS_" || &table == &kGroupFrame;
    const bool hasFrame = (table.quiet & kBorder) != 0 || &table == &kComboBox;
    return kExNoParentNotify | kExControlParent | (isStatic ? kExTransparent : 0) |
           (hasFrame ? kFrames : 0);
}

} // namespace

Notes StyleNotes(const Control& control) {
    const StyleTable& table = TableOf(control);
    const bool isButton = &table == &kPushButton || &table == &kCheck;
    Notes notes;
    NoteStyle(notes, isButton ? WithoutUsualPlaces(control.style, table) : control.style, table);
    NoteStyle(notes, control.exStyle, {"WS_EX_", QuietExtended(table), kExNotes, ~Style{0}});
    return notes;
}

} // namespace vm::rc
