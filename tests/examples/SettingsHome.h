// A home folder with a profile of another program's making, forgotten again at the end.
#pragma once

#include <string>

#include <gmock/gmock.h>

#include <windows.h>

#include "support/TemporaryHome.h"

class SettingsHome : public testing::Test {
protected:
    static constexpr const char* kProfile = "XDG_CONFIG_HOME/Velmora Win.ini";
    static constexpr const char* kRegistry = "XDG_CONFIG_HOME/Velmora Preferences.ini";

    SettingsHome() {
        InitProfileManager();
        UserPreferencesPath[0] = '\0';
        m_home.Write(kProfile, "[Other]\r\nKey=1\r\n");
        m_home.Write(kRegistry, "[Software\\Other]\r\nKey=1\r\n");
    }
    ~SettingsHome() override {
        Reload();
        UserPreferencesPath[0] = '\0';
    }

    // Writes everything and forgets it, as the end of one run and the start of the next do.
    void Reload() const {
        FlushProfile((m_home.Path() / kProfile).c_str());
        FlushProfile((m_home.Path() / kRegistry).c_str());
    }

    TemporaryHome m_home;
};
