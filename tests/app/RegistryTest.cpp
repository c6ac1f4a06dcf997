// The registries as plain data: which pointers live, and which view belongs to which object.
#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "app/ControlReferences.h"
#include "app/WindowList.h"

namespace {

const void* Pointer(std::uintptr_t n) {
    return reinterpret_cast<const void*>(n * 16);
}
HWND View(std::uintptr_t n) {
    return reinterpret_cast<HWND>(n * 16);
}
CWnd* Object(std::uintptr_t n) {
    return reinterpret_cast<CWnd*>(n * 64);
}

} // namespace

TEST(WindowList, CountsEntriesOfOnePointer) {
    vm::WindowList list;
    EXPECT_FALSE(list.Contains(Pointer(1)));
    EXPECT_FALSE(list.Contains(nullptr));
    list.Add(Pointer(1));
    list.Add(Pointer(1));
    EXPECT_EQ(list.Count(), 2u);
    EXPECT_TRUE(list.Remove(Pointer(1)));
    EXPECT_TRUE(list.Contains(Pointer(1)));
    EXPECT_TRUE(list.Remove(Pointer(1)));
    EXPECT_FALSE(list.Contains(Pointer(1)));
    EXPECT_FALSE(list.Remove(Pointer(1)));
    EXPECT_EQ(list.Count(), 0u);
}

TEST(WindowList, GrowsAndForgets) {
    vm::WindowList list;
    for (std::uintptr_t i = 1; i <= 5000; ++i) list.Add(Pointer(i));
    for (std::uintptr_t i = 1; i <= 5000; i += 2) EXPECT_TRUE(list.Remove(Pointer(i)));
    for (std::uintptr_t i = 1; i <= 5000; ++i)
        ASSERT_EQ(list.Contains(Pointer(i)), i % 2 == 0) << i;
    EXPECT_EQ(list.Count(), 2500u);
}

// Objects come and go at ever new addresses; the list must not grow with them.
TEST(WindowList, StaysUsableWhenAddressesKeepChanging) {
    vm::WindowList list;
    list.Add(Pointer(1));
    for (std::uintptr_t i = 2; i < 200000; ++i) {
        list.Add(Pointer(i));
        list.Remove(Pointer(i));
    }
    EXPECT_TRUE(list.Contains(Pointer(1)));
    EXPECT_LE(list.Slots(), 1024u);
}

TEST(WindowList, ReadersSeeAStandingEntryWhileOthersChange) {
    vm::WindowList list;
    list.Add(Pointer(1));
    std::atomic<bool> stop = false;
    std::atomic<int> missed = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i)
        readers.emplace_back([&] {
            while (!stop)
                if (!list.Contains(Pointer(1))) ++missed;
        });
    for (std::uintptr_t i = 2; i < 50000; ++i) {
        list.Add(Pointer(i));
        if (i > 101) list.Remove(Pointer(i - 100));
    }
    stop = true;
    for (std::thread& reader : readers) reader.join();
    EXPECT_EQ(missed, 0);
}

TEST(ControlReferences, FirstBindingCounts) {
    vm::ControlReferences references;
    references.Bind(View(1), Object(1), nullptr);
    references.Bind(View(1), Object(2), nullptr);
    EXPECT_EQ(references.Find(View(1)), Object(1));
    EXPECT_EQ(references.Find(View(2)), nullptr);
    references.RemoveObject(Object(1));
    EXPECT_EQ(references.Find(View(1)), Object(2));
    references.Bind(View(1), Object(1), nullptr);
    EXPECT_EQ(references.Find(View(1)), Object(2)) << "a new binding goes to the end";
}

TEST(ControlReferences, RemovalTakesEveryBindingOfTheObject) {
    vm::ControlReferences references;
    references.Bind(View(1), Object(1), nullptr);
    references.Bind(View(2), Object(1), nullptr);
    references.Bind(View(2), Object(2), nullptr);
    references.Bind(View(1), Object(1), nullptr);
    references.RemoveObject(Object(1));
    EXPECT_EQ(references.Count(), 1u);
    EXPECT_EQ(references.Find(View(1)), nullptr);
    EXPECT_EQ(references.Find(View(2)), Object(2));
    references.RemoveObject(Object(9)); // unknown
    EXPECT_EQ(references.Count(), 1u);
}

TEST(ControlReferences, RemovalByWindowTakesItsControlsOnly) {
    vm::ControlReferences references;
    int first = 0;
    int second = 0;
    references.Bind(View(1), Object(1), &first);
    references.Bind(View(2), Object(2), &second);
    references.Bind(View(3), Object(3), &first);
    references.Bind(View(4), Object(4), nullptr); // made off the main thread
    references.RemoveWindow(&first);
    EXPECT_EQ(references.Count(), 2u);
    EXPECT_EQ(references.Find(View(2)), Object(2));
    EXPECT_EQ(references.Find(View(4)), Object(4));
}

TEST(ControlReferences, HandleIsThatOfTheLastBinding) {
    vm::ControlReferences references;
    EXPECT_EQ(references.HandleOf(Object(1)), nullptr);
    references.Bind(View(1), Object(1), nullptr);
    references.Bind(View(2), Object(1), nullptr);
    EXPECT_EQ(references.HandleOf(Object(1)), View(2));
}
