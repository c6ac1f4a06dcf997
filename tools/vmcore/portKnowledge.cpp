// Reading the tables, and looking names up in them.
#include "portKnowledge.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "portTables.h"

namespace vm::tool {
namespace {

constexpr PortName kUnknown{PortState::Unknown, "in no table: look for it in the headers"};
constexpr PortName kEightBit{PortState::Missing,
                             "texts are 8-bit: the name without the last letter"};

// Beginnings of the interfaces' constants, macros and functions.
constexpr auto kHabits = std::to_array<std::string_view>({
    "ACM_",
    "AFX_",
    "Afx",
    "BCM_",
    "BCN_",
    "BFFM_",
    "BM_",
    "BN_",
    "BST_",
    "BS_",
    "CBEM_",
    "CBN_",
    "CBRS_",
    "CBS_",
    "CB_",
    "CCM_",
    "CCS_",
    "CDDS_",
    "CDIS_",
    "CDM_",
    "CDN_",
    "CDRF_",
    "CLSCTX_",
    "CMFC",
    "CSIDL_",
    "CWM_",
    "DDV_",
    "DDX_",
    "DFCS_",
    "DLGC_",
    "DTM_",
    "DTN_",
    "DWLP_",
    "EM_",
    "EN_",
    "ES_",
    "FILE_ATTRIBUTE_",
    "GCL_",
    "GMEM_",
    "GWLP_",
    "GWL_",
    "HDM_",
    "HDN_",
    "HKEY_",
    "HWND_",
    "ILC_",
    "ILD_",
    "IMAGE_",
    "LBN_",
    "LBS_",
    "LB_",
    "LR_",
    "LVCF",
    "LVFI_",
    "LVHT_",
    "LVIF_",
    "LVIR_",
    "LVIS_",
    "LVM_",
    "LVNI_",
    "LVN_",
    "LVSIL_",
    "LVS_",
    "MB_",
    "MCM_",
    "MFS_",
    "MFT_",
    "MF_",
    "MHDR_",
    "MIIM_",
    "MIM_",
    "MK_",
    "MMSYSERR_",
    "MOM_",
    "NIF_",
    "NIM_",
    "NM_",
    "ODS_",
    "OFN_",
    "ON_",
    "PBM_",
    "PBS_",
    "PM_",
    "PSBTN_",
    "PSH_",
    "PSM_",
    "PSN_",
    "PSP_",
    "PSWIZB_",
    "QS_",
    "R2_",
    "RBS_",
    "RB_",
    "RDW_",
    "REG_",
    "RGN_",
    "SBARS_",
    "SBM_",
    "SBS_",
    "SB_",
    "SC_",
    "SHCNE_",
    "SHGFI_",
    "SIF_",
    "SM_",
    "SND_",
    "SPI_",
    "SS_",
    "STM_",
    "STN_",
    "SWP_",
    "SW_",
    "TBBS_",
    "TBM_",
    "TBN_",
    "TBSTATE_",
    "TBSTYLE_",
    "TBS_",
    "TB_",
    "TCIF_",
    "TCIS_",
    "TCM_",
    "TCN_",
    "TCS_",
    "TME_",
    "TPM_",
    "TTF_",
    "TTM_",
    "TTN_",
    "TTS_",
    "TVE_",
    "TVGN_",
    "TVHT_",
    "TVIF_",
    "TVIS_",
    "TVI_",
    "TVM_",
    "TVN_",
    "TVSIL_",
    "TVS_",
    "UDM_",
    "UDN_",
    "UDS_",
    "VK_",
    "WM_",
    "WSA",
    "WS_",
    "_Afx",
    "_tcs",
});
static_assert(std::is_sorted(kHabits.begin(), kHabits.end()));

std::string_view Trim(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == ',')) text.remove_suffix(1);
    return text;
}

// The next word, which is taken off `text`.
std::string_view TakeWord(std::string_view& text) {
    text = Trim(text);
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return Trim(word);
}

bool HasLowerCase(std::string_view name) {
    return std::any_of(name.begin(), name.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}
bool IsUpperCase(char c) {
    return c >= 'A' && c <= 'Z';
}

// MFC classes and COM interfaces are types, whatever stands behind them.
bool LooksLikeType(std::string_view name) {
    return name.size() > 2 && (name[0] == 'C' || name[0] == 'I') && IsUpperCase(name[1]);
}

} // namespace

const char* PortStateName(PortState state) {
    constexpr std::array<const char*, 4> names = {"there", "difference", "missing", "unknown"};
    return names[static_cast<std::size_t>(state)];
}

const PortKnowledge& PortKnowledge::Get() {
    static const PortKnowledge knowledge;
    return knowledge;
}

PortKnowledge::PortKnowledge() {
    for (const std::string_view line : kPortThere) ReadThere(line);
    for (const std::string_view line : kPortDifferences) ReadDifference(line);
    for (const std::string_view line : kPortMissing) ReadMissing(line);
    FillAnyMember();
}

void PortKnowledge::ReadThere(std::string_view line) {
    const char kind = line[0];
    line.remove_prefix(2);
    const std::size_t colons = line.find("::");
    if (kind == 'h') {
        m_headers[line] = {PortState::There, {}};
    } else if (kind == 'c') {
        ClassFacts& facts = m_classes[TakeWord(line)];
        while (!line.empty()) facts.bases.push_back(TakeWord(line));
    } else if (kind == 'm') {
        m_classes[line.substr(0, colons)].members[line.substr(colons + 2)] = {PortState::There, {}};
    } else {
        m_names[line] = {PortState::There, {}, kind == 'f' && HasLowerCase(line)};
    }
}

void PortKnowledge::ReadDifference(std::string_view line) {
    const std::size_t bar = line.find(" | ");
    if (bar == std::string_view::npos) return;
    const std::string_view text = line.substr(bar + 3);
    for (std::string_view names = line.substr(0, bar); !names.empty();) {
        const std::string_view name = TakeWord(names);
        const std::size_t colons = name.find("::");
        PortName& entry = colons == std::string_view::npos
                              ? m_names[name]
                              : m_classes[name.substr(0, colons)].members[name.substr(colons + 2)];
        entry.state = PortState::Differs;
        entry.text = text;
    }
}

void PortKnowledge::ReadMissing(std::string_view line) {
    const std::size_t bar = line.find(" | ");
    if (bar == std::string_view::npos) return;
    for (std::string_view names = line.substr(0, bar); !names.empty();)
        AddMissing(TakeWord(names), line.substr(bar + 3));
}

void PortKnowledge::AddMissing(std::string_view name, std::string_view text) {
    const PortName missing{PortState::Missing, text, HasLowerCase(name) && !LooksLikeType(name)};
    const std::size_t colon = name.find(':');
    if (name[0] == '<') {
        m_headers[name.substr(1, name.size() - 2)] = missing;
    } else if (colon == std::string_view::npos) {
        m_names[name] = missing;
        if (LooksLikeType(name)) m_classes[name].isMissing = true;
        if (LooksLikeType(name)) m_classes[name].text = text;
    } else if (name.substr(colon).starts_with("::")) {
        m_classes[name.substr(0, colon)].members[name.substr(colon + 2)] = missing;
    } else {
        AddMissing(name.substr(0, colon), text);
        m_classes[name.substr(0, colon)].bases.push_back(name.substr(colon + 1));
    }
}

// Constructors and names that other libraries' objects have as well are left out.
void PortKnowledge::FillAnyMember() {
    for (const auto& [className, facts] : m_classes) {
        for (const auto& [member, what] : facts.members) {
            if (member == className || !IsUpperCase(member[0])) continue;
            std::string whole(className);
            whole.append("::").append(member);
            const auto [at, isNew] = m_anyMembers.try_emplace(member, PortMember{whole, what});
            if (isNew) continue;
            PortMember& known = at->second;
            const bool isSame = known.what.state == what.state && known.what.text == what.text;
            known.name = isSame && !known.name.empty() ? std::string(member) : std::string();
        }
    }
}

bool PortKnowledge::LooksLikeOne(std::string_view name) {
    if (name.size() < 5) return false;
    const auto after = std::upper_bound(kHabits.begin(), kHabits.end(), name);
    for (auto habit = after; habit != kHabits.begin();) {
        --habit;
        if ((*habit)[0] != name[0]) return false;
        if (!name.starts_with(*habit) || name.size() == habit->size()) continue;
        return habit->ends_with('_') ? !HasLowerCase(name)
                                     : IsUpperCase(name[habit->size()]) || *habit == "_tcs";
    }
    return false;
}

const PortName* PortKnowledge::Wide(std::string_view name) const {
    if (name.size() < 6 || (name.back() != 'W' && name.back() != 'A')) return nullptr;
    const auto plain = m_names.find(name.substr(0, name.size() - 1));
    return plain != m_names.end() && plain->second.isFunction ? &kEightBit : nullptr;
}

const PortName* PortKnowledge::Plain(std::string_view name) const {
    const auto known = m_names.find(name);
    if (known != m_names.end()) return &known->second;
    if (const PortName* const wide = Wide(name)) return wide;
    return LooksLikeOne(name) ? &kUnknown : nullptr;
}

const PortName* PortKnowledge::Header(std::string_view quoted) const {
    if (quoted.size() < 3) return nullptr;
    std::string name(quoted.substr(1, quoted.size() - 2));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    std::replace(name.begin(), name.end(), '\\', '/');
    const auto known = m_headers.find(name);
    if (known != m_headers.end()) return &known->second;
    return quoted[0] == '<' && name.starts_with("afx") ? &kUnknown : nullptr;
}

bool PortKnowledge::Find(std::string_view className, std::string_view member,
                         PortMember& found) const {
    const auto at = m_classes.find(className);
    if (at == m_classes.end()) return false;
    const auto known = at->second.members.find(member);
    if (known != at->second.members.end()) {
        found = {std::string(className).append("::").append(member), known->second};
        return true;
    }
    return std::any_of(at->second.bases.begin(), at->second.bases.end(),
                       [&](std::string_view base) { return Find(base, member, found); });
}

PortMember PortKnowledge::Member(std::string_view className, std::string_view member) const {
    const auto at = m_classes.find(className);
    if (at == m_classes.end()) return {};
    PortMember found;
    if (Find(className, member, found)) return found;
    found.name = std::string(className).append("::").append(member);
    found.what = at->second.isMissing ? PortName{PortState::Missing, at->second.text} : kUnknown;
    return found;
}

PortMember PortKnowledge::AnyMember(std::string_view member) const {
    const auto at = m_anyMembers.find(member);
    return at == m_anyMembers.end() ? PortMember{} : at->second;
}

} // namespace vm::tool
