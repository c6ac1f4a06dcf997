#include "controls/interfaceFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QWidget>

#include "app/appState.h"
#include "controls/interfaceLimits.h"
#include "core/log.h"
#include "platform/bundle.h"
#include "platform/mainqueue.h"
#include "platform/menuBar.h"
#include "wnd/tagTable.h"

namespace fs = std::filesystem;

namespace vm {
namespace {

constexpr std::uintmax_t kLargestFile = 4 * 1024 * 1024;

struct CachedFile {
    fs::file_time_type modified;
    std::string problem; // empty for a file that may be loaded
    QByteArray bytes;
};

// The loader of the process, with the classes of the load that runs.
class Loader : public QUiLoader {
public:
    QWidget* Load(const QByteArray& bytes, QWidget* parent, const InterfaceClasses& classes) {
        setWorkingDirectory(QFile::decodeName(ResourceBundle()->ResourcePath().c_str()));
        m_classes = &classes;
        m_hasRoot = false;
        QByteArray copy = bytes;
        QBuffer buffer(&copy);
        buffer.open(QIODevice::ReadOnly);
        QWidget* root = load(&buffer, parent);
        m_classes = nullptr;
        return root;
    }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        QWidget* widget = Replacement(className, parent);
        if (widget)
            widget->setObjectName(name);
        else
            widget = QUiLoader::createWidget(className, parent, name);
        if (widget && m_classes->made) m_classes->made(widget);
        return widget;
    }

private:
    QWidget* Replacement(const QString& className, QWidget* parent) {
        const bool isRoot = !std::exchange(m_hasRoot, true);
        QWidget* root =
            isRoot && m_classes->makeRoot ? m_classes->makeRoot(className, parent) : nullptr;
        if (root) return root;
        QWidget* widget =
            m_classes->makeWidget ? m_classes->makeWidget(className, parent) : nullptr;
        if (!widget && className == QLatin1String("QMenuBar")) return MakeMenuBar(parent);
        return widget;
    }

    const InterfaceClasses* m_classes = nullptr;
    bool m_hasRoot = false;
};

// It would load every Designer plug-in that there is.
Loader& ProcessLoader() {
    static Loader* const s_loader = [] {
        const PlugInsHidden hidden;
        return new Loader;
    }();
    return *s_loader;
}

std::unordered_map<std::string, CachedFile>& Cache() {
    static auto* const s_cache = new std::unordered_map<std::string, CachedFile>;
    return *s_cache;
}

void LogWhy(const std::string& path, const std::string& why) {
    Log(LogModule::Controls, "interface file %s: %s", path.c_str(), why.c_str());
}

CachedFile ReadFile(const std::string& path, fs::file_time_type modified) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return {modified, "not a regular file", {}};
    if (fs::file_size(path, error) > kLargestFile) return {modified, "larger than 4 MB", {}};
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (!file) return {modified, "it cannot be read", {}};
    QByteArray content = QByteArray::fromStdString(bytes);
    const InterfaceProblem problem = ProblemOfInterface(content);
    if (problem.why.empty()) return {modified, {}, std::move(content)};
    return {modified, Format("line %d: %s", problem.line, problem.why.c_str()), {}};
}

// The file's bytes, read and looked over again only when the file has changed; null, with a log
// line, when it may not be loaded.
const QByteArray* FileBytes(const std::string& path) {
    std::error_code error;
    const fs::file_time_type modified = fs::last_write_time(path, error);
    if (error) return LogWhy(path, error.message()), nullptr;
    CachedFile& cached = Cache()[path];
    if (cached.modified != modified || cached.bytes.isEmpty()) cached = ReadFile(path, modified);
    if (!cached.problem.empty()) return LogWhy(path, cached.problem), nullptr;
    return &cached.bytes;
}

std::string OneLine(const QString& text) {
    return text.simplified().toStdString();
}

// Designer connects the buttons of a new dialog to slots that only the toolkit's own dialogs have.
bool IsAboutConnections(const std::string& line) {
    return line.rfind("QObject::connect: ", 0) == 0;
}

// What the toolkit prints on the main thread while it loads a file is collected in its place.
class ToolkitWarnings {
public:
    ToolkitWarnings() {
        s_lines = &m_lines;
        s_before = qInstallMessageHandler(Collect);
    }
    ~ToolkitWarnings() { qInstallMessageHandler(s_before); }
    ToolkitWarnings(const ToolkitWarnings&) = delete;
    ToolkitWarnings& operator=(const ToolkitWarnings&) = delete;

    const std::vector<std::string>& Lines() const { return m_lines; }

private:
    static void Collect(QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (type != QtFatalMsg && IsMainThread())
            s_lines->push_back(OneLine(text));
        else if (s_before)
            s_before(type, context, text);
    }

    static inline std::vector<std::string>* s_lines = nullptr;
    static inline QtMessageHandler s_before = nullptr;
    std::vector<std::string> m_lines;
};

} // namespace

std::string InterfaceFilePath(const std::string& name) {
    return ResourceBundle()->ResourcePath() + "/" + name + ".ui";
}

bool InterfaceFileExists(const std::string& name) {
    std::error_code ignored;
    return fs::exists(InterfaceFilePath(name), ignored);
}

QWidget* LoadInterfaceFile(const std::string& name, QWidget* parent,
                           const InterfaceClasses& classes) {
    const std::string path = InterfaceFilePath(name);
    const QByteArray* bytes = FileBytes(path);
    if (!bytes) return nullptr;
    if (classes.reads) classes.reads(*bytes);
    QWidget* root = nullptr;
    std::vector<std::string> warnings;
    {
        const ToolkitWarnings collected;
        root = ProcessLoader().Load(*bytes, parent, classes);
        warnings = collected.Lines();
    }
    if (!root) return LogWhy(path, OneLine(ProcessLoader().errorString())), nullptr;
    for (const std::string& warning : warnings)
        if (!IsAboutConnections(warning)) LogWhy(path, warning);
    KeepTagTable(root);
    return root;
}

bool LoadInterfaceFile(void* owner, const std::string& name) {
    static auto* const s_loaded = new std::map<std::pair<void*, std::string>, QPointer<QWidget>>;
    QPointer<QWidget>& root = (*s_loaded)[{owner, InterfaceFilePath(name)}];
    if (!root) root = LoadInterfaceFile(name);
    return root != nullptr;
}

void LogAboutInterfaceFile(const std::string& name, const std::string& why) {
    LogWhy(InterfaceFilePath(name), why);
}

} // namespace vm
