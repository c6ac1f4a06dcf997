#include "rc/writeAccelerators.h"

#include <cstdio>
#include <set>

#include "rc/acceleratorKeys.h"

namespace vm::rc {
namespace {

// Not the symbol itself, which is a macro in the program.
std::string TableName(const AcceleratorTable& table) {
    return "Accelerators_" + Identifier(SymbolOf(table.head.id)).substr(0, 64);
}

std::string Row(int command, const KeyEntry& entry, const Accelerator& accelerator) {
    char row[96];
    std::snprintf(row, sizeof row, "    {%d, 0x%04X, %d, %d, %d},", command,
                  static_cast<unsigned>(entry.key), entry.control ? 1 : 0, accelerator.alt ? 1 : 0,
                  entry.shift ? 1 : 0);
    return row;
}

// Nothing of the script's own spelling: it could end the comment.
std::string Comment(const Accelerator& accelerator, const KeyEntry& entry) {
    const std::string& keys = entry.name;
    const std::string command =
        accelerator.command.symbol.empty() ? "" : ": " + Identifier(accelerator.command.symbol);
    return keys.find('\\') == std::string::npos ? " // " + keys + command : "";
}

// The rows of one accelerator; says what became of it.
std::string Rows(const Accelerator& accelerator, const std::string& where, Output& output) {
    const std::string what = "ACCELERATOR " + accelerator.symbol;
    const std::vector<KeyEntry> entries = KeyEntriesOf(accelerator);
    if (!accelerator.command.number) {
        output.LeaveOut(accelerator.place, what, "its command has no number");
        return {};
    }
    if (entries.empty()) {
        output.LeaveOut(accelerator.place, what, "no key of the library's");
        return {};
    }
    std::string rows;
    for (const KeyEntry& entry : entries)
        rows += Row(*accelerator.command.number, entry, accelerator) + Comment(accelerator, entry) +
                "\n";
    output.Say(accelerator.place, what, where);
    return rows;
}

std::string Definition(const AcceleratorTable& table, const std::string& where, Output& output) {
    std::string text = "\nconst AccelEntry " + TableName(table) + "[] = {\n";
    for (const Accelerator& accelerator : table.keys) text += Rows(accelerator, where, output);
    return text + "    {-1, 0, 0, 0, 0},\n};\n";
}

constexpr char kHeaderText[] = "// Accelerator tables, for CWnd::accelTable. Made by `vmcore rc`.\n"
                               "#pragma once\n\n#include <vmcore/controls/CMenu.h>\n\n";

} // namespace

void WriteAccelerators(const std::vector<const AcceleratorTable*>& tables,
                       const std::string& scriptName, Output& output) {
    if (tables.empty()) return;
    const std::string name = Identifier(scriptName) + "Accelerators";
    std::string header = kHeaderText;
    std::string source = "// Made by `vmcore rc`.\n#include \"" + name + ".h\"\n";
    std::set<std::string> names;
    for (const AcceleratorTable* table : tables) {
        const std::string tableName = TableName(*table);
        if (!names.insert(tableName).second) {
            output.LeaveOut(table->head.place, Described(table->head),
                            "there is an earlier table of this name");
            continue;
        }
        output.Say(table->head.place, Described(table->head),
                   name + ".cpp, " + tableName + " for CWnd::accelTable");
        header += "extern const AccelEntry " + tableName + "[];\n";
        source += Definition(*table, name + ".cpp", output);
    }
    output.Add(name + ".h", header);
    output.Add(name + ".cpp", source);
}

Shortcuts ShortcutsOf(const std::vector<const AcceleratorTable*>& tables, int mainMenu) {
    Shortcuts own;
    Shortcuts all;
    for (const AcceleratorTable* table : tables)
        for (const Accelerator& accelerator : table->keys) {
            const std::string keys = ShortcutOf(accelerator);
            if (keys.empty() || !accelerator.command.number) continue;
            all.try_emplace(*accelerator.command.number, keys);
            if (table->head.id.number == mainMenu)
                own.try_emplace(*accelerator.command.number, keys);
        }
    return own.empty() ? all : own;
}

} // namespace vm::rc
