#include <vmcore/app/CWinApp.h>
#include <vmcore/app/lifecycle.h>
#include <vmcore/wnd/CWnd.h>

#include <cstring>

#include <gmock/gmock.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtGui/QImage>

#include "app/CWinAppDelegate.h"
#include "app/appState.h"
#include "app/help.h"
#include "app/programIcon.h"
#include "platform/bundle.h"
#include "platform/mainqueue.h"
#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"
#include "support/TemporaryHome.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr char kPlist[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
  <key>CFBundleVersion</key><integer>3</integer>
  <key>CFBundleName</key><string>Test &amp; Host</string>
  <key>Executable file</key><string>host</string>
  <key>CFBundleHelpBookName</key><string>Host Help</string>
</dict></plist>
)";

// A bundle folder in a temporary home, set as the host's bundle for the life of the object.
class BundleFixture : public testing::Test {
protected:
    BundleFixture() {
        m_home.Write("Host.app/Contents/Info.plist", kPlist);
        m_home.Write("Host.app/Contents/MacOS/host", "");
        m_home.Write("Host.app/Contents/Resources/Host Help/index.html", "<html></html>");
        m_path = (m_home.Path() / "Host.app").string();
        AfxSetDVBundle(VMBundleWithPath(m_path.c_str()));
        std::memset(vm::App().AppName, 0, sizeof vm::App().AppName);
    }
    ~BundleFixture() override { vm::App().DVBundle = nullptr; }

    TemporaryHome m_home;
    std::string m_path;
    char m_buffer[256] = "unset";
};

class NoBundle : public testing::Test {
protected:
    void SetUp() override { vm::App().DVBundle = nullptr; }
    char m_buffer[256] = "unset";
};

struct CountingApp : CWinApp {
    using CWinApp::CWinApp;
    int ExitInstance() override { return ++*exits; }
    int MessageMap(int, WPARAM wParam, LPARAM) override {
        aboutId = static_cast<int>(wParam);
        return 1;
    }
    int* exits = &own;
    int own = 0;
    int aboutId = 0;
};

} // namespace

TEST(DllMainReasons, OtherReasonsDoNothing) {
    LogCapture log;
    for (const unsigned reason : {2u, 3u, 99u}) EXPECT_EQ(DllMain(nullptr, reason), 1);
    EXPECT_THAT(log.TakeLog(), testing::IsEmpty());
}

TEST(InstanceRecord, AttachesOnceAndDetachesAtItsEnd) {
    LogCapture log;
    char name[256] = "";
    {
        MacInstance record;
        EXPECT_EQ(record.Initialize("Plug-in"), &record);
        EXPECT_THAT(log.TakeLog(), Contains("Initializing VMCore"));
        EXPECT_EQ(vm::App().hInstance, &record);
        record.Initialize("Another");
        EXPECT_THAT(log.TakeLog(), testing::IsEmpty());
        EXPECT_STREQ(AfxGetInstanceName(&record, name), "Plug-in");
    }
    EXPECT_THAT(log.TakeLog(), Contains("Finished terminating VMCore"));
    EXPECT_STREQ(MacInstanceName(nullptr), "");
}

TEST(InstanceRecord, NamesAreCutToTheirBuffer) {
    LogCapture log;
    {
        MacInstance record;
        record.Initialize(std::string(1000, 'n').c_str());
        char name[1001];
        EXPECT_EQ(std::strlen(AfxGetInstanceName(&record, name)), 255u);
    }
    log.Ignore();
}

TEST(InstanceRegistry, FirstEntryAnswersAndUnknownOnesAreEmpty) {
    int handle = 0;
    char buffer[64] = "before";
    AfxGetInstanceName(&handle, buffer);
    EXPECT_STREQ(buffer, "");
    AfxRegisterInstance(&handle, "one");
    AfxRegisterInstance(static_cast<const void*>(&handle), "two");
    EXPECT_STREQ(AfxGetInstanceName(&handle, buffer), "one");
}

TEST_F(BundleFixture, NamesComeFromTheInfoList) {
    EXPECT_EQ(AfxApplicationName(m_buffer, 3), 11) << "the copy is not bounded by the size";
    EXPECT_STREQ(m_buffer, "Test & Host");
    EXPECT_EQ(AfxApplicationCodeName(m_buffer, 256), 4);
    EXPECT_STREQ(m_buffer, "host");
    EXPECT_STREQ(AfxGetAppName(), "Test & Host");
    EXPECT_EQ(AfxApplicationName(nullptr, 256), 0);
}

TEST_F(BundleFixture, NamesAreCachedOnceTheyAreThere) {
    EXPECT_STREQ(AfxGetAppName(), "Test & Host");
    vm::App().DVBundle = nullptr;
    EXPECT_STREQ(AfxGetAppName(), "Test & Host");
}

TEST_F(BundleFixture, NamesAreCutToTheBuffersOfTheLibrary) {
    m_home.Write("Long.app/Contents/Info.plist", "<plist><dict><key>CFBundleName</key><string>" +
                                                     std::string(5000, 'n') +
                                                     "</string></dict></plist>");
    AfxSetDVBundle(VMBundleWithPath((m_home.Path() / "Long.app").c_str()));
    EXPECT_EQ(AfxApplicationName(m_buffer, 256), 255);
    EXPECT_EQ(std::strlen(AfxGetAppName()), 255u);
    CountingApp app;
    app.InitInstance();
    EXPECT_EQ(std::strlen(app.m_pszAppName), 255u);
}

TEST_F(BundleFixture, IconOfTheProgramIsAPictureOfTheBundle) {
    const auto sizeWith = [this](const std::string& name) {
        QGuiApplication::setWindowIcon({});
        const std::string entry = "<key>CFBundleIconFile</key><string>" + name + "</string>";
        m_home.Write("Host.app/Contents/Info.plist",
                     "<plist version=\"1.0\"><dict>" + entry + "</dict></plist>");
        vm::ShowProgramIcon();
        const QList<QSize> sizes = QGuiApplication::windowIcon().availableSizes();
        return sizes.isEmpty() ? 0 : sizes.front().width();
    };
    QImage picture(24, 24, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    const std::string resources = m_path + "/Contents/Resources/";
    ASSERT_TRUE(picture.save(QString::fromStdString(resources + "Host.png")));
    EXPECT_EQ(sizeWith("Host.png"), 24);
    EXPECT_EQ(sizeWith("Host"), 24);
    LogCapture log;
    EXPECT_EQ(sizeWith(""), 0);
    EXPECT_THAT(log.TakeLog(), testing::IsEmpty());
    for (const std::string name : {"none.png", "Host Help"}) {
        EXPECT_EQ(sizeWith(name), 0);
        EXPECT_THAT(log.TakeLog(), ElementsAre(HasSubstr("is no picture")));
    }
}

TEST_F(BundleFixture, PathsAreThoseOfTheBundle) {
    const int length = AfxApplicationPath(m_buffer, 256);
    EXPECT_EQ(m_path + "/Contents/MacOS", m_buffer);
    EXPECT_EQ(length, static_cast<int>(std::strlen(m_buffer)));
    AfxResourcePath(m_buffer, 256);
    EXPECT_EQ(m_path + "/Contents/Resources", m_buffer);
    char small[8];
    EXPECT_EQ(AfxApplicationPath(small, 8), 7) << "never past the buffer";
    EXPECT_EQ(AfxApplicationPath(nullptr, 256), 0);
}

TEST_F(BundleFixture, HelpOpensThePageOfTheBook) {
    static std::string s_opened;
    vm::SetHelpOpener([](const std::string& address) {
        s_opened = address;
        return true;
    });
    CountingApp app;
    app.HtmlHelp(120);
    EXPECT_THAT(s_opened, HasSubstr("Host%20Help/index.html#DV_120"));
    s_opened.clear();
    app.WinHelp(120, 1); // only command 0 does anything
    EXPECT_EQ(s_opened, "");
    LogCapture log;
    EXPECT_EQ(WinHelp(nullptr, "file", 0, 7), 1); // the fixed book is not in this bundle
    EXPECT_EQ(WinHelp(nullptr, "file", 3, 7), 1);
    EXPECT_THAT(log.TakeLog(), ElementsAre(HasSubstr("DravikXL Help")));
    vm::SetHelpOpener(nullptr);
}

TEST_F(NoBundle, EveryGetterSaysWhatIsMissing) {
    LogCapture log;
    MessageBoxRecorder boxes;
    EXPECT_EQ(AfxApplicationName(m_buffer, 256), 0);
    EXPECT_STREQ(m_buffer, "");
    EXPECT_EQ(AfxApplicationCodeName(m_buffer, 256), 0);
    EXPECT_EQ(AfxApplicationPath(m_buffer, 256), 0);
    EXPECT_EQ(AfxResourcePath(m_buffer, 256), 0);
    EXPECT_THAT(log.TakeLog(), ElementsAre("AfxApplicationName called with DVBundle not set",
                                           "AfxApplicatoniCodeName called with DVBundle not set",
                                           "AfxApplicationPath called with DVBundle not set"));
    EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{"DVBundle not set", "AfxResourcePath", 1}));
}

TEST_F(NoBundle, BareExecutableYieldsItsFolder) {
    AfxSetDVBundle(nullptr); // this process: a bare test program
    const std::string executable = AfxGetDVBundle()->ExecutablePath();
    AfxApplicationPath(m_buffer, 256);
    EXPECT_EQ(m_buffer, executable.substr(0, executable.rfind('/')));
}

TEST(Bundles, MissingFolderIsNoBundle) {
    EXPECT_EQ(VMBundleWithPath("/no/such/Folder.app"), nullptr);
    EXPECT_EQ(VMBundleWithPath(nullptr), nullptr);
    EXPECT_NE(VMBundleForAddress(reinterpret_cast<const void*>(&AfxSetDVBundle)), nullptr);
    EXPECT_EQ(VMBundleForAddress(reinterpret_cast<const void*>(1)), nullptr);
}

TEST_F(BundleFixture, MalformedInfoListIsAMissingKey) {
    m_home.Write("Bad.app/Contents/Info.plist", "<plist><dict><key>CFBundleName</key><st");
    AfxSetDVBundle(VMBundleWithPath((m_home.Path() / "Bad.app").c_str()));
    EXPECT_EQ(AfxApplicationName(m_buffer, 256), 0);
    EXPECT_STREQ(m_buffer, "");
}

TEST_F(BundleFixture, KeysOfInnerDictionariesAreNotTheBundles) {
    m_home.Write("Deep.app/Contents/Info.plist",
                 "<plist><dict><key>Types</key><array><dict><key>CFBundleName</key>"
                 "<string>inner</string></dict></array><key>CFBundleName</key>"
                 "<string>outer</string><key>Executable file</key><true/></dict></plist>");
    AfxSetDVBundle(VMBundleWithPath((m_home.Path() / "Deep.app").c_str()));
    AfxApplicationName(m_buffer, 256);
    EXPECT_STREQ(m_buffer, "outer");
    EXPECT_EQ(AfxApplicationCodeName(m_buffer, 256), 0) << "not a string";
}

TEST(Application, AccessorsWithoutOneSayWhatIsMissing) {
    LogCapture log;
    EXPECT_EQ(AfxGetApp(), nullptr);
    EXPECT_EQ(AfxGetMainWnd(), nullptr);
    AfxSetMainWnd(nullptr);
    EXPECT_EQ(AfxGetMainWndHandle(), nullptr);
    EXPECT_THAT(log.TakeLog(),
                ElementsAre("Internal Error! Request to AfxGetApp() before MainApp is Set",
                            "Internal Error! Request for MainWnd before WinApp set",
                            "Internal Error! Request to set MainWnd before WinApp set"));
}

TEST(Application, SecondObjectTakesOver) {
    int firstExits = 0;
    {
        CountingApp first;
        first.exits = &firstExits;
        {
            CountingApp second("Named");
            EXPECT_EQ(AfxGetApp(), &second);
            EXPECT_STREQ(second.m_pszAppName, "Named");
            EXPECT_EQ(second.m_nCmdShow, 5);
        }
        LogCapture log;
        EXPECT_EQ(AfxGetApp(), nullptr) << "the second one's end leaves no application";
        log.Ignore();
    }
    EXPECT_EQ(firstExits, 0) << "a destructor calls its own class's ExitInstance only";
}

TEST_F(BundleFixture, InitInstanceTakesTheNameOfTheBundle) {
    CountingApp app;
    EXPECT_EQ(app.m_pszAppName, nullptr);
    EXPECT_TRUE(app.InitInstance());
    EXPECT_STREQ(app.m_pszAppName, "Test & Host");
}

TEST(Application, PostMessageMustNotBeUsed) {
    CountingApp app;
    MessageBoxRecorder boxes(2);
    EXPECT_EQ(app.PostMessage(nullptr, 1, 0, 0), 2);
    EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{"CWinApp:PostMessage - should never be called",
                                                   "Internal Error", 1}));
}

TEST(Application, FixedAnswers) {
    LogCapture log;
    EXPECT_EQ(AfxGetStaticModuleState(), nullptr);
    EXPECT_EQ(AfxRegisterWndClass(0), nullptr);
    EXPECT_EQ(InitAppleEvents(), 0);
    EXPECT_EQ(MyQuit() + DoOpenApp() + DoPrintDocuments(), 0);
    EXPECT_EQ(GetProcessSignature(), 0x3F3F3F3Fu);
    EXPECT_TRUE(AfxInitExtensionModule(nullptr, nullptr));
    EXPECT_EQ(OpenResourceFile("x"), 0);
    EXPECT_THAT(log.TakeLog(), ElementsAre("OpenResourceFile should never be called"));
    int handle = 0;
    AfxSetResourceHandle(&handle);
    EXPECT_EQ(AfxGetInstanceHandle(), &handle);
    AfxSetResourceHandle(nullptr);
}

TEST(ApplicationDelegate, AboutGoesToTheApplicationUnlessADialogIsUp) {
    LogCapture log;
    CountingApp app;
    CWinAppDelegate& delegate = CWinAppDelegate::Shared();
    vm::App().displayDlg = 1;
    delegate.about();
    EXPECT_EQ(app.aboutId, 0);
    log.Ignore();
    EXPECT_EQ(delegate.applicationShouldTerminate(), CWinAppDelegate::Reply::Cancel);
    EXPECT_THAT(log.TakeLog(), ElementsAre("the application does not end while a dialog is open"));
    vm::App().displayDlg = 0;
    delegate.about();
    EXPECT_EQ(app.aboutId, 0xE140);
    EXPECT_EQ(delegate.applicationShouldTerminate(), CWinAppDelegate::Reply::Now);
}

TEST(ApplicationDelegate, WithoutApplicationItReportsAndStaysNeutral) {
    LogCapture log;
    CWinAppDelegate& delegate = CWinAppDelegate::Shared();
    EXPECT_FALSE(delegate.openFile("/a.syx"));
    EXPECT_EQ(delegate.applicationShouldTerminate(), CWinAppDelegate::Reply::Now);
    delegate.winCmd(nullptr);
    EXPECT_THAT(log.TakeLog(), ElementsAre("Internal Error! Request for MainWnd before WinApp set",
                                           "Internal Error! Request for MainWnd before WinApp set",
                                           "winCmd called by a non-MenuItem"));
}

namespace {

// Asks for the end again while it is being asked, as a host's "Save changes?" dialog lets happen.
struct AskingAgain : vm::ApplicationDelegate {
    bool hasApplication() const override { return true; }
    void applicationWillFinishLaunching() override { PostQuitMessage(0); }
    void applicationDidFinishLaunching() override {}
    bool openFile(const std::string&) override { return false; }
    Reply applicationShouldTerminate() override {
        if (++asked < 3) vm::NativeApplication::Shared().Terminate();
        return Reply::Now;
    }
    void applicationWillTerminate() override { ++ended; }
    int asked = 0;
    int ended = 0;
};

} // namespace

TEST(Termination, IsAskedForAndToldOnce) {
    static AskingAgain s_delegate; // the application keeps it
    EXPECT_EQ(vm::NativeApplication::Shared().Main(0, nullptr, &s_delegate), 0);
    EXPECT_EQ(s_delegate.asked, 1);
    EXPECT_EQ(s_delegate.ended, 1);
}
