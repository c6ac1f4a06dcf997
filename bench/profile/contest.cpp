#include "contest.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace bench {
namespace {

volatile std::size_t s_sink; // what is looked up must not be optimised away

void GetRange(Store& store, const Batch& batch, std::size_t begin, std::size_t end) {
    std::size_t total = 0;
    for (std::size_t i = begin; i < end; ++i) total += store.Get(batch, i);
    s_sink = total;
}

void SetRange(Store& store, const Batch& batch, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) store.Set(batch, i);
}

using Range = void (*)(Store& store, const Batch& batch, std::size_t begin, std::size_t end);

// Per question of the second half; the first one fills the caches, which were another store's.
double WarmNanoseconds(Range range, Store& store, const Batch& batch) {
    const std::size_t half = batch.size() / 2;
    range(store, batch, 0, half);
    return NanosecondsPer(static_cast<int>(batch.size() - half),
                          [&] { range(store, batch, half, batch.size()); });
}

} // namespace

bool CanRead(Store& store, const IniFile& file, const std::string& path) {
    if (!store.Open(path)) {
        std::fprintf(stderr, "%s: %s refuses the file\n", file.name.c_str(), store.Name());
        return false;
    }
    const Batch hits = Questions(file).Hits();
    const std::size_t found = CountFound(store, hits);
    const bool takesPart = found * 10 >= hits.size() * 9;
    if (found < hits.size())
        std::fprintf(stderr, "%s: %s finds %.1f %% of the entries%s\n", file.name.c_str(),
                     store.Name(), 100.0 * static_cast<double>(found) / kQuestions,
                     takesPart ? "" : " and takes no part");
    return takesPart;
}

Contest::Contest(const IniFile& file, Folder& folder)
    : m_file(file), m_folder(folder), m_questions(file) {
    Admit(MakeOurStore());
    for (std::unique_ptr<Store>& peer : MakePeers()) Admit(std::move(peer));
}

Contest::~Contest() {
    for (Seat& seat : m_seats) Drop(seat);
}

void Contest::Admit(std::unique_ptr<Store> store) {
    Seat seat{std::move(store), m_folder.NewName()};
    WriteText(seat.path, m_file.text);
    if (CanRead(*seat.store, m_file, seat.path))
        m_seats.push_back(std::move(seat));
    else
        Drop(seat);
}

void Contest::Drop(Seat& seat) {
    seat.store->Close();
    std::filesystem::remove(seat.path);
}

double Contest::Run() {
    Loads();
    const double hit = LookUps("hit", m_questions.Hits());
    LookUps("missing-key", m_questions.MissingKeys());
    LookUps("missing-section", m_questions.MissingSections());
    LookUps("same-section", m_questions.HitsInOneSection());
    Sets();
    SetAndSave();
    SetNew();
    return hit;
}

double Contest::Column(const std::string& name, const std::string& unit, const Measure& measure) {
    std::vector<Competitor> competitors;
    for (Seat& seat : m_seats)
        competitors.push_back({seat.store->Name(), [&] { return measure(seat); }});
    const int rounds = m_file.entries.size() > 500000 ? 5 : 15;
    const std::vector<Figure> figures = CompareAll(rounds, competitors);
    ReportBest(name + "-" + m_file.name, figures, unit);
    return figures.front().value;
}

void Contest::TimeColumn(const std::string& name, const Measure& nanoseconds) {
    const bool large = IsLarge(m_file);
    Column(name, large ? "ms" : "us",
           [&](Seat& seat) { return nanoseconds(seat) / (large ? 1e6 : 1e3); });
}

// A new name each time: a store may remember a file that it has seen.
double Contest::OpenNanoseconds(Seat& seat, const Batch& first) {
    Drop(seat);
    seat.path = m_folder.NewName();
    WriteText(seat.path, m_file.text);
    return NanosecondsPer(1, [&] {
        seat.store->Open(seat.path);
        GetRange(*seat.store, first, 0, first.size());
    });
}

// With one look-up, since QSettings and the library read late; then with one in each section, since
// QSettings parses a section when it is first asked for. So all is parsed when the look-ups begin.
void Contest::Loads() {
    const Batch one = m_questions.First();
    const Batch each = m_questions.OneInEachSection();
    TimeColumn("load", [&](Seat& seat) { return OpenNanoseconds(seat, one); });
    TimeColumn("load-sections", [&](Seat& seat) { return OpenNanoseconds(seat, each); });
}

double Contest::LookUps(const std::string& name, const Batch& batch) {
    return Column(name, "ns",
                  [&](Seat& seat) { return WarmNanoseconds(GetRange, *seat.store, batch); });
}

void Contest::Sets() {
    const Batch batch = m_questions.Changes(kQuestions);
    Column("set", "ns", [&](Seat& seat) { return WarmNanoseconds(SetRange, *seat.store, batch); });
}

// Stops the benchmark when the value is not in the file afterwards.
void Contest::SetAndSave() {
    const std::size_t saves = std::max<std::size_t>(1, (1U << 17) / m_file.text.size());
    TimeColumn("set-and-save", [&](Seat& seat) {
        const Batch batch = m_questions.Changes(saves);
        const double time = NanosecondsPer(static_cast<int>(saves), [&] {
            for (std::size_t i = 0; i < saves; ++i) {
                seat.store->Set(batch, i);
                seat.store->Save();
            }
        });
        if (ReadText(seat.path).find(batch[saves - 1].value) == std::string::npos) {
            std::fprintf(stderr, "bench_profile: %s has not saved\n", seat.store->Name());
            std::exit(1);
        }
        return time;
    });
}

// Into the file as it was, each time.
void Contest::SetNew() {
    const Batch each = m_questions.OneInEachSection();
    const Batch batch = m_questions.Additions();
    const std::size_t repeats = std::max<std::size_t>(1, 5000 / batch.size());
    Column("set-new", "ns", [&](Seat& seat) {
        double total = 0;
        for (std::size_t repeat = 0; repeat < repeats; ++repeat) {
            OpenNanoseconds(seat, each);
            total += NanosecondsPer(static_cast<int>(batch.size()),
                                    [&] { SetRange(*seat.store, batch, 0, batch.size()); });
        }
        return total / static_cast<double>(repeats);
    });
}

void ReportFlatness(const IniFile& file, const IniFile& small, Folder& folder) {
    const std::size_t count = small.entries.size();
    const std::unique_ptr<Store> store = MakeOurStore();
    // One file is open at a time: the library goes through their names.
    const auto hits = [&](const IniFile& asked) {
        const std::string path = folder.NewName();
        WriteText(path, asked.text);
        const Batch batch = Questions(asked).HitsAmong(0, count, asked.entries.size() / count);
        return [&store, path, batch] {
            store->Open(path);
            const double time = WarmNanoseconds(GetRange, *store, batch);
            store->Close();
            return time;
        };
    };
    const Pair pair = Compare(15, hits(file), hits(small));
    Report("flat-hit-among-" + std::to_string(count) + "-of-" + file.name, pair.ours, "ns",
           "VMCore at " + small.name, pair.peer);
}

} // namespace bench
