// The style bits that scripts use: those of the Windows interfaces, which are not the library's own.
#pragma once

#include <cstdint>

namespace vm::rc::win {

using Style = std::uint32_t;

inline constexpr Style kPopup = 0x80000000, kChild = 0x40000000, kVisible = 0x10000000,
                       kDisabled = 0x08000000, kClipSiblings = 0x04000000,
                       kClipChildren = 0x02000000, kCaption = 0x00C00000, kBorder = 0x00800000,
                       kVScroll = 0x00200000, kHScroll = 0x00100000, kSysMenu = 0x00080000,
                       kThickFrame = 0x00040000, kGroup = 0x00020000, kTabStop = 0x00010000,
                       kMinimizeBox = 0x00020000, kMaximizeBox = 0x00010000;

// Extended ones.
inline constexpr Style kExModalFrame = 0x1, kExNoParentNotify = 0x4, kExTopmost = 0x8,
                       kExAcceptFiles = 0x10, kExTransparent = 0x20, kExToolWindow = 0x80,
                       kExWindowEdge = 0x100, kExClientEdge = 0x200, kExContextHelp = 0x400,
                       kExRight = 0x1000, kExRtlReading = 0x2000, kExControlParent = 0x10000,
                       kExStaticEdge = 0x20000, kExAppWindow = 0x40000, kExLayoutRtl = 0x400000,
                       kExComposited = 0x2000000;

// Dialogs.
inline constexpr Style kDsAbsAlign = 0x1, kDsSysModal = 0x2, kDs3dLook = 0x4, kDsFixedSys = 0x8,
                       kDsNoFailCreate = 0x10, kDsLocalEdit = 0x20, kDsSetFont = 0x40,
                       kDsModalFrame = 0x80, kDsNoIdleMsg = 0x100, kDsSetForeground = 0x200,
                       kDsControl = 0x400, kDsCenter = 0x800, kDsCenterMouse = 0x1000,
                       kDsContextHelp = 0x2000, kDsUsePixels = 0x8000;

// Buttons.
inline constexpr Style kBsTypes = 0xF, kBsLeftText = 0x20, kBsIcon = 0x40, kBsBitmap = 0x80,
                       kBsLeft = 0x100, kBsRight = 0x200, kBsTop = 0x400, kBsBottom = 0x800,
                       kBsPushLike = 0x1000, kBsMultiline = 0x2000, kBsNotify = 0x4000,
                       kBsFlat = 0x8000;
enum ButtonType : Style {
    kPush,
    kDefPush,
    kCheckBox,
    kAutoCheckBox,
    kRadio,
    k3State,
    kAuto3State,
    kGroupBox,
    kUserButton,
    kAutoRadio,
    kOwnerDraw = 0xB,
};

// Edit fields.
inline constexpr Style kEsCenter = 0x1, kEsRight = 0x2, kEsMultiline = 0x4, kEsUpper = 0x8,
                       kEsLower = 0x10, kEsPassword = 0x20, kEsAutoVScroll = 0x40,
                       kEsAutoHScroll = 0x80, kEsNoHideSel = 0x100, kEsReadOnly = 0x800,
                       kEsWantReturn = 0x1000, kEsNumber = 0x2000;
inline constexpr Style kEsDisableNoScroll = 0x2000, kEsSunken = 0x4000, kEsSaveSel = 0x8000,
                       kEsNoIme = 0x80000, kEsVertical = 0x400000,
                       kEsSelectionBar = 0x1000000; // of rich texts

// Static controls.
inline constexpr Style kSsTypes = 0x1F, kSsRealSize = 0x40, kSsNoPrefix = 0x80, kSsNotify = 0x100,
                       kSsCenterImage = 0x200, kSsRightJust = 0x400, kSsRealSizeImage = 0x800,
                       kSsSunken = 0x1000, kSsEllipsis = 0xC000;
enum StaticType : Style {
    kLeft,
    kCenter,
    kRight,
    kIcon,
    kBlackRect,
    kGrayRect,
    kWhiteRect,
    kBlackFrame,
    kGrayFrame,
    kWhiteFrame,
    kUserItem,
    kSimple,
    kLeftNoWrap,
    kStaticOwnerDraw,
    kBitmap,
    kEnhMetaFile,
    kEtchedHorz,
    kEtchedVert,
    kEtchedFrame,
};

// List boxes and combo boxes.
inline constexpr Style kLbsNotify = 0x1, kLbsSort = 0x2, kLbsMultipleSel = 0x8,
                       kLbsOwnerDraw = 0x30, kLbsHasStrings = 0x40, kLbsNoIntegralHeight = 0x100,
                       kLbsMultiColumn = 0x200, kLbsExtendedSel = 0x800,
                       kLbsDisableNoScroll = 0x1000, kLbsNoSel = 0x4000;
inline constexpr Style kCbsTypes = 0x3, kCbsSimple = 0x1, kCbsDropDown = 0x2, kCbsOwnerDraw = 0x30,
                       kCbsAutoHScroll = 0x40, kCbsSort = 0x100, kCbsHasStrings = 0x200,
                       kCbsNoIntegralHeight = 0x400, kCbsUpper = 0x2000, kCbsLower = 0x4000;

inline constexpr Style kSbsVert = 0x1, kSbsNearAlign = 0x2, kSbsFarAlign = 0x4, kSbsSizeBox = 0x18;

// Common controls.
inline constexpr Style kTbsAutoTicks = 0x1, kTbsVert = 0x2, kTbsTop = 0x4, kTbsBoth = 0x8,
                       kTbsNoTicks = 0x10, kTbsEnableSelRange = 0x20, kTbsReversed = 0x200,
                       kTbsTransparent = 0x1000;
inline constexpr Style kUdsWrap = 0x1, kUdsSetBuddyInt = 0x2, kUdsAlignRight = 0x4,
                       kUdsAlignLeft = 0x8, kUdsAutoBuddy = 0x10, kUdsArrowKeys = 0x20,
                       kUdsHorz = 0x40, kUdsNoThousands = 0x80, kUdsHotTrack = 0x100;
inline constexpr Style kPbsSmooth = 0x1, kPbsVertical = 0x4, kPbsMarquee = 0x8,
                       kPbsSmoothReverse = 0x10;
inline constexpr Style kLvsTypes = 0x3, kLvsReport = 0x1, kLvsSingleSel = 0x4,
                       kLvsShowSelAlways = 0x8, kLvsSort = 0x30, kLvsShareImageLists = 0x40,
                       kLvsIconsOnly = 0x980, kLvsEditLabels = 0x200, kLvsOwnerDraw = 0x400,
                       kLvsOwnerData = 0x1000, kLvsNoScroll = 0x2000, kLvsNoHeader = 0x4000,
                       kLvsNoSortHeader = 0x8000;
inline constexpr Style kTvsHasButtons = 0x1, kTvsHasLines = 0x2, kTvsLinesAtRoot = 0x4,
                       kTvsEditLabels = 0x8, kTvsDisableDragDrop = 0x10, kTvsShowSelAlways = 0x20,
                       kTvsNoToolTips = 0x80, kTvsCheckBoxes = 0x100, kTvsFullRowSelect = 0x1000,
                       kTvsNoScroll = 0x2000, kTvsNoHScroll = 0x8000;
inline constexpr Style kTcsBottom = 0x2, kTcsHotTrack = 0x40, kTcsVertical = 0x80,
                       kTcsButtons = 0x108, kTcsMultiLine = 0x200, kTcsRaggedRight = 0x800,
                       kTcsOwnerDraw = 0x2000, kTcsFocusNever = 0x8000;
inline constexpr Style kDtsUpDown = 0x1, kDtsShowNone = 0x2, kDtsLong = 0x4, kDtsTime = 0x8,
                       kDtsCentury = 0xC, kDtsRightAlign = 0x20;
inline constexpr Style kLwsTransparent = 0x1, kLwsNoPrefix = 0x4, kLwsRight = 0x20;

} // namespace vm::rc::win
