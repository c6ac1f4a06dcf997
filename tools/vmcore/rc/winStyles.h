// The style bits that scripts use: those of the Windows interfaces, which are not the library's own.
#pragma once

#include <cstdint>

namespace vm::rc::win {

using Style = std::uint32_t;

inline constexpr Style kChild = 0x40000000, kVisible = 0x10000000, kDisabled = 0x08000000,
                       kCaption = 0x00C00000, kBorder = 0x00800000, kVScroll = 0x00200000,
                       kHScroll = 0x00100000, kSysMenu = 0x00080000, kThickFrame = 0x00040000,
                       kGroup = 0x00020000, kTabStop = 0x00010000, kMinimizeBox = 0x00020000,
                       kMaximizeBox = 0x00010000;

// Extended ones.
inline constexpr Style kExTopmost = 0x8, kExAcceptFiles = 0x10, kExTransparent = 0x20,
                       kExToolWindow = 0x80, kExClientEdge = 0x200, kExContextHelp = 0x400,
                       kExRight = 0x1000, kExRtlReading = 0x2000, kExStaticEdge = 0x20000,
                       kExLayoutRtl = 0x400000;

// Dialogs.
inline constexpr Style kDsAbsAlign = 0x1, kDsSysModal = 0x2, kDsNoIdleMsg = 0x100,
                       kDsContextHelp = 0x2000;

// Buttons.
inline constexpr Style kBsTypes = 0xF, kBsLeftText = 0x20, kBsIcon = 0x40, kBsBitmap = 0x80,
                       kBsLeft = 0x100, kBsRight = 0x200, kBsTop = 0x400, kBsBottom = 0x800,
                       kBsPushLike = 0x1000, kBsMultiline = 0x2000, kBsFlat = 0x8000;
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
                       kEsLower = 0x10, kEsPassword = 0x20, kEsAutoHScroll = 0x80,
                       kEsReadOnly = 0x800, kEsNumber = 0x2000;

// Static controls.
inline constexpr Style kSsTypes = 0x1F, kSsRealSize = 0x40, kSsNoPrefix = 0x80, kSsNotify = 0x100,
                       kSsCenterImage = 0x200, kSsSunken = 0x1000, kSsEllipsis = 0xC000;
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
inline constexpr Style kLbsSort = 0x2, kLbsMultipleSel = 0x8, kLbsOwnerDraw = 0x30,
                       kLbsMultiColumn = 0x200, kLbsExtendedSel = 0x800, kLbsNoSel = 0x4000;
inline constexpr Style kCbsTypes = 0x3, kCbsSimple = 0x1, kCbsDropDown = 0x2, kCbsOwnerDraw = 0x30,
                       kCbsSort = 0x100, kCbsUpper = 0x2000, kCbsLower = 0x4000;

inline constexpr Style kSbsVert = 0x1, kSbsSizeBox = 0x18;

// Common controls.
inline constexpr Style kTbsVert = 0x2, kTbsTop = 0x4, kTbsBoth = 0x8, kTbsNoTicks = 0x10,
                       kTbsEnableSelRange = 0x20;
inline constexpr Style kUdsWrap = 0x1, kUdsSetBuddyInt = 0x2, kUdsAlignRight = 0x4,
                       kUdsAlignLeft = 0x8, kUdsAutoBuddy = 0x10, kUdsArrowKeys = 0x20,
                       kUdsHorz = 0x40;
inline constexpr Style kPbsVertical = 0x4, kPbsMarquee = 0x8;
inline constexpr Style kLvsTypes = 0x3, kLvsReport = 0x1, kLvsSingleSel = 0x4, kLvsSort = 0x30,
                       kLvsEditLabels = 0x200, kLvsOwnerDraw = 0x400, kLvsOwnerData = 0x1000,
                       kLvsNoHeader = 0x4000;
inline constexpr Style kTvsEditLabels = 0x8, kTvsCheckBoxes = 0x100;
inline constexpr Style kTcsBottom = 0x2, kTcsVertical = 0x80, kTcsButtons = 0x100,
                       kTcsMultiLine = 0x200, kTcsOwnerDraw = 0x2000;
inline constexpr Style kDtsUpDown = 0x1, kDtsShowNone = 0x2, kDtsTime = 0x8;

} // namespace vm::rc::win
