// The program's settings: texts and the window's place, in the section [Librarian] of the default
// profile, which all programs share. Changes reach the disk with ServiceProfile.
#pragma once

#include <string>

#include <afxwin.h>

/// What a text setting is stored under.
namespace setting {
constexpr const char* kFolder = "Folder";
constexpr const char* kMidiOut = "MidiOut";
constexpr const char* kMidiIn = "MidiIn";
constexpr const char* kFtpServer = "FtpServer";
constexpr const char* kFtpFolder = "FtpFolder";
constexpr const char* kFtpUser = "FtpUser";
constexpr const char* kFtpPattern = "FtpPattern";
} // namespace setting

/// Whether `key`=`value` comes back from a profile as it was written: a value ends at its first ';'
/// and loses blanks at its end, and a line holds 255 characters.
bool FitsProfile(const std::string& key, const std::string& value);

/// "" for a setting that is missing.
std::string LoadSetting(const char* key);
/// Stores a text that fits; any other deletes the setting, because neither a part of it nor what
/// was there before is right.
void StoreSetting(const char* key, const std::string& value);

/// The rectangle of the window's frame on the screen. FALSE, and `place` is untouched, when none is
/// stored.
BOOL LoadPlace(CRect& place);
void StorePlace(const CRect& place);

/// The smallest size that the window's frame may have.
constexpr int kSmallestWidth = 600;
constexpr int kSmallestHeight = 380;

/// The rectangle nearest to `place` that is wholly on the screen: smaller when it is too large for
/// it, but not smaller than the window may be.
CRect FitOnScreen(const CRect& place, const CRect& screen);
