#include "rc/dialogInit.h"

#include <algorithm>
#include <cstdint>

#include "rc/codePages.h"
#include "rc/writeOutput.h"

namespace vm::rc {
namespace {

constexpr std::size_t kHeadSize = 8;

// The numbers of 16-bit Windows, which resource editors have kept, beside today's.
constexpr int kListMessages[] = {0x401, 0x180};          // LB_ADDSTRING
constexpr int kComboMessages[] = {0x403, 0x143, 0x1234}; // CB_ADDSTRING; an extended combo box's

std::uint32_t WordAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}

bool AddsText(const std::string& windowClass, int message) {
    const auto has = [message](const auto& messages) {
        return std::find(std::begin(messages), std::end(messages), message) != std::end(messages);
    };
    if (windowClass == "listbox") return has(kListMessages);
    return (windowClass == "combobox" || windowClass == "comboboxex32") && has(kComboMessages);
}

Dialog* DialogOf(std::vector<Resource>& resources, const Id& id) {
    for (Resource& resource : resources) {
        auto* const dialog = std::get_if<Dialog>(&resource);
        if (dialog && dialog->head.id.number == id.number && dialog->head.id.name == id.name)
            return dialog;
    }
    return nullptr;
}

Control* ControlOf(Dialog& dialog, int number) {
    for (Control& control : dialog.controls)
        if (control.id.number == number) return &control;
    return nullptr;
}

// What one DLGINIT has for its dialog.
class Giver {
public:
    Giver(const Other& init, Dialog& dialog, Report& report)
        : m_init(init), m_dialog(dialog), m_report(report) {}

    void Run() {
        const InitRecords all = InitRecordsOf(*m_init.bytes);
        for (const InitRecord& record : all.records) Give(record);
        if (!all.trouble.empty()) LeaveOut("rest of DLGINIT " + m_init.head.id.symbol, all.trouble);
        if (m_given == 0) return LeaveOut(Described(m_init.head), "it has no texts of lists");
        const std::string where = "DLG_" + FileId(m_dialog.head.id) + ".ui, ";
        m_report.Add({m_init.head.place,
                      m_note.empty() ? Outcome::Converted : Outcome::Approximated,
                      Described(m_init.head),
                      where + std::to_string(m_given) + " texts of its lists" + m_note});
    }

private:
    void LeaveOut(const std::string& what, const std::string& why) {
        m_report.Add({m_init.head.place, Outcome::LeftOut, what, why});
    }

    void Give(const InitRecord& record) {
        Control* const control = ControlOf(m_dialog, record.control);
        const std::string what = "data of DLGINIT " + m_init.head.id.symbol + " for ";
        if (!control)
            return LeaveOut(what + std::to_string(record.control),
                            "the dialog has no control of this number");
        if (!AddsText(control->windowClass, record.message))
            return LeaveOut(what + SymbolOf(control->id),
                            "message " + Hexadecimal(static_cast<std::uint32_t>(record.message)) +
                                " adds no text to a '" + control->windowClass + "'");
        control->items.push_back(TextOf(record.bytes));
        ++m_given;
    }

    // Unicode scripts have these bytes in the code page of Windows all the same.
    std::string TextOf(std::string_view bytes) {
        bytes = bytes.substr(0, bytes.find('\0'));
        Decoded decoded = ToUtf8(bytes, m_init.codePage);
        if (decoded.lacking.empty()) return decoded.text;
        const bool isUnicode = m_init.codePage == kUtf8;
        m_note = isUnicode ? ": bytes beyond ASCII are taken for code page 1252"
                           : ": U+FFFD for what the code page lacks";
        return isUnicode ? ToUtf8(bytes, kDefaultCodePage).text : decoded.text;
    }

    const Other& m_init;
    Dialog& m_dialog;
    Report& m_report;
    int m_given = 0;
    std::string m_note;
};

} // namespace

InitRecords InitRecordsOf(std::string_view bytes) {
    InitRecords all;
    while (bytes.size() >= 2 && WordAt(bytes, 0) != 0) {
        const std::string control = std::to_string(WordAt(bytes, 0));
        const std::size_t length =
            bytes.size() < kHeadSize ? 0 : WordAt(bytes, 4) | std::size_t{WordAt(bytes, 6)} << 16;
        if (bytes.size() < kHeadSize || bytes.size() - kHeadSize < length) {
            all.trouble = "the data for control " + control + " is longer than the block";
            return all;
        }
        all.records.push_back({static_cast<int>(WordAt(bytes, 0)),
                               static_cast<int>(WordAt(bytes, 2)),
                               std::string(bytes.substr(kHeadSize, length))});
        bytes.remove_prefix(kHeadSize + length);
    }
    if (bytes.size() < 2) all.trouble = "expected a 0 at the end";
    if (bytes.size() > 2) all.trouble = "it ends with a 0 before";
    return all;
}

void GiveTexts(std::vector<Resource>& resources, Report& report) {
    for (const Resource& resource : resources) {
        const auto* const init = std::get_if<Other>(&resource);
        if (!init || !init->bytes) continue;
        if (Dialog* const dialog = DialogOf(resources, init->head.id))
            Giver(*init, *dialog, report).Run();
        else
            report.Add({init->head.place, Outcome::LeftOut, Described(init->head),
                        "the script has no dialog of this number"});
    }
    std::erase_if(resources, [](const Resource& resource) {
        const auto* const other = std::get_if<Other>(&resource);
        return other && other->bytes;
    });
}

} // namespace vm::rc
