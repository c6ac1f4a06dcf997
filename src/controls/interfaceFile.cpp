#include "controls/interfaceFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <unordered_map>

#include <QtCore/QBuffer>
#include <QtCore/QPointer>
#include <QtUiTools/QUiLoader>

#include "app/appState.h"
#include "core/log.h"
#include "platform/bundle.h"
#include "wnd/views.h"

namespace fs = std::filesystem;

namespace vm {
namespace {

struct CachedFile {
    fs::file_time_type modified;
    QByteArray bytes;
};

using TagTable = std::unordered_map<int, QPointer<QWidget>>;

// The loader of the process, with the classes of the load that runs.
class Loader : public QUiLoader {
public:
    QWidget* Load(const QByteArray& bytes, QWidget* parent, const InterfaceClasses& classes) {
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
        if (!widget) return QUiLoader::createWidget(className, parent, name);
        widget->setObjectName(name);
        return widget;
    }

private:
    QWidget* Replacement(const QString& className, QWidget* parent) {
        const bool isRoot = !std::exchange(m_hasRoot, true);
        QWidget* root = isRoot && m_classes->makeRoot ? m_classes->makeRoot(parent) : nullptr;
        if (root) return root;
        return m_classes->makeWidget ? m_classes->makeWidget(className, parent) : nullptr;
    }

    const InterfaceClasses* m_classes = nullptr;
    bool m_hasRoot = false;
};

// Made while the toolkit has no library paths: it would load every Designer plug-in that there is.
Loader& ProcessLoader() {
    static Loader* const s_loader = [] {
        const QStringList paths = QCoreApplication::libraryPaths();
        QCoreApplication::setLibraryPaths({});
        auto* loader = new Loader;
        QCoreApplication::setLibraryPaths(paths);
        return loader;
    }();
    return *s_loader;
}

std::unordered_map<std::string, CachedFile>& Cache() {
    static auto* const s_cache = new std::unordered_map<std::string, CachedFile>;
    return *s_cache;
}

std::unordered_map<const QObject*, TagTable>& TagTables() {
    static auto* const s_tables = new std::unordered_map<const QObject*, TagTable>;
    return *s_tables;
}

void LogWhy(const std::string& path, const std::string& why) {
    Log(LogModule::Controls, "interface file %s: %s", path.c_str(), why.c_str());
}

// The file's bytes, read again only when the file has changed; null when it cannot be read.
const QByteArray* FileBytes(const std::string& path) {
    std::error_code error;
    const fs::file_time_type modified = fs::last_write_time(path, error);
    if (error) return LogWhy(path, error.message()), nullptr;
    CachedFile& cached = Cache()[path];
    if (cached.modified == modified && !cached.bytes.isEmpty()) return &cached.bytes;
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (!file) return LogWhy(path, "it cannot be read"), nullptr;
    cached = {modified, QByteArray::fromStdString(bytes)};
    return &cached.bytes;
}

void CollectTags(const QWidget* parent, TagTable& tags) {
    for (QObject* child : parent->children()) {
        if (!child->isWidgetType()) continue;
        auto* view = static_cast<QWidget*>(child);
        const QVariant tag = view->property(kTagProperty);
        if (tag.isValid()) tags.try_emplace(tag.toInt(), view);
        CollectTags(view, tags);
    }
}

void RecordTags(QWidget* root) {
    CollectTags(root, TagTables()[root]);
    QObject::connect(root, &QObject::destroyed, [root] { TagTables().erase(root); });
}

std::string OneLine(const QString& text) {
    return text.simplified().toStdString();
}

} // namespace

Bundle* InterfaceBundle() {
    return App().DVBundle ? App().DVBundle : Bundle::Main();
}

std::string InterfaceFilePath(const std::string& name) {
    return InterfaceBundle()->ResourcePath() + "/" + name + ".ui";
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
    QWidget* root = ProcessLoader().Load(*bytes, parent, classes);
    if (!root) return LogWhy(path, OneLine(ProcessLoader().errorString())), nullptr;
    RecordTags(root);
    return root;
}

bool LoadInterfaceFile(void* owner, const std::string& name) {
    static auto* const s_loaded = new std::map<std::pair<void*, std::string>, QPointer<QWidget>>;
    QPointer<QWidget>& root = (*s_loaded)[{owner, InterfaceFilePath(name)}];
    if (!root) root = LoadInterfaceFile(name);
    return root != nullptr;
}

QWidget* InterfaceView(const QWidget* root, int tag) {
    const auto table = TagTables().find(root);
    if (table == TagTables().end()) return nullptr;
    const auto found = table->second.find(tag);
    return found == table->second.end() ? nullptr : found->second.data();
}

} // namespace vm
