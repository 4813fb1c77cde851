// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/detail/NamedSequence.h"

#include "UtilityDLL/settings/IniFile.h"
#include "UtilityDLL/settings/Section.h"
#include "tests/support/CollidingNames.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Counts how often a name is looked at and how often an element is moved or copied over another.
struct Item {
    Item() = default;
    Item(const std::wstring& name, int number) : m_name(HashedString<wchar_t>(name)), m_number(number) {}
    Item(const Item&) = default;
    Item(Item&&) = default;
    Item& operator=(const Item& other) noexcept {
        ++moves;
        m_name = other.m_name;
        m_number = other.m_number;
        return *this;
    }
    Item& operator=(Item&& other) noexcept { return *this = std::as_const(other); }
    ~Item() = default;

    const HashedString<wchar_t>& GetName() const {
        ++looks;
        return m_name.Get();
    }
    int Number() const { return m_number; }
    void Rename(const std::wstring& name) { m_name.Set(HashedString<wchar_t>(name)); }

    static inline std::atomic<std::size_t> looks = 0;
    static inline std::atomic<std::size_t> moves = 0;

private:
    friend class NamedSequence<Item>;
    IndexedName m_name;
    int m_number = 0;
};

using Sequence = NamedSequence<Item>;

/// The same sequence as a plain vector that is always scanned.
struct Model {
    std::vector<std::pair<std::wstring, int>> items;

    std::size_t Find(const std::wstring& name) const {
        std::size_t position = 0;
        while (position < items.size() && !icompareW(items[position].first, name)) ++position;
        return position;
    }
};

std::wstring Name(unsigned number) { return L"Name" + std::to_wstring(number); }

Sequence LongSequence(unsigned count) {
    Sequence sequence;
    for (unsigned i = 0; i < count; ++i) sequence.Append(Name(i), static_cast<int>(i));
    return sequence;
}

void ExpectFinds(const Sequence& sequence, unsigned count) {
    ASSERT_EQ(count, sequence.Size());
    for (unsigned i = 0; i < count; ++i) {
        ASSERT_EQ(i, sequence.Find(Name(i)));
        ASSERT_EQ(static_cast<int>(i), sequence[i].Number());
    }
    ASSERT_EQ(count, sequence.Find(L"missing"));
}

void ExpectFindsBothWays(Sequence& sequence, unsigned count) {
    ExpectFinds(std::as_const(sequence), count);
    for (unsigned i = 0; i < count; ++i) ASSERT_EQ(i, sequence.Find(Name(i)));
    ASSERT_EQ(count, sequence.Find(L"missing"));
}

const std::vector<unsigned> kSizes = {0, 1, 2, 31, 32, 33, 34, 63, 64, 65, 127, 128, 129, 1000};

} // namespace

TEST(NamedSequence, FindsEveryNameAtEveryLength) {
    Sequence sequence;
    for (unsigned i = 0; i < 300; ++i) {
        ASSERT_NO_FATAL_FAILURE(ExpectFinds(sequence, i));
        ASSERT_NO_FATAL_FAILURE(ExpectFindsBothWays(sequence, i));
        EXPECT_EQ(static_cast<int>(i), sequence.Append(Name(i), static_cast<int>(i)).Number());
    }
}

TEST(NamedSequence, TheFirstOfDuplicatesIsFound) {
    for (const unsigned count : kSizes) {
        Sequence sequence = LongSequence(count);
        for (unsigned i = 0; i < count; ++i) sequence.Append(L"NAME" + std::to_wstring(i), -1);
        for (unsigned i = 0; i < count; ++i) {
            ASSERT_EQ(i, sequence.Find(Name(i)));
            ASSERT_EQ(i, std::as_const(sequence).Find(L"nAME" + std::to_wstring(i)));
        }
    }
}

TEST(NamedSequence, AHundredThousandEqualNamesCostNoMoreThanOthers) {
    Sequence sequence;
    for (int i = 0; i < 100000; ++i) sequence.Append(L"same", i); // would take minutes if it were quadratic
    EXPECT_EQ(0u, sequence.Find(L"SAME"));
    EXPECT_EQ(100000u, sequence.Find(L"other"));
}

TEST(NamedSequence, ARenamedElementIsFoundByItsNewNameOnly) {
    for (const unsigned count : kSizes) {
        if (count == 0) continue;
        Sequence sequence = LongSequence(count);
        Item& held = sequence[count / 2];
        held.Rename(L"new");
        EXPECT_EQ(count / 2, std::as_const(sequence).Find(L"NEW"));
        EXPECT_EQ(count, std::as_const(sequence).Find(Name(count / 2)));
        EXPECT_EQ(count / 2, sequence.Find(L"NEW"));
        EXPECT_EQ(count, sequence.Find(Name(count / 2)));
        held.Rename(Name(0));
        EXPECT_EQ(0u, sequence.Find(Name(0)));
        EXPECT_EQ(count, sequence.Find(L"new"));
        held.Rename(L"name" + std::to_wstring(count / 2)); // the letter case alone
        EXPECT_EQ(count / 2, sequence.Find(Name(count / 2)));
    }
}

TEST(NamedSequence, AnElementRenamedAfterTheSequenceMovedIsFound) {
    for (const unsigned count : {40u, 1000u}) {
        Sequence source = LongSequence(count);
        ASSERT_EQ(3u, source.Find(Name(3)));
        Item& held = source[5];
        Sequence target = std::move(source);
        held.Rename(L"moved");
        EXPECT_EQ(5u, target.Find(L"moved"));
        Sequence assigned = LongSequence(7);
        assigned = std::move(target);
        held.Rename(L"again");
        EXPECT_EQ(5u, assigned.Find(L"again"));
        EXPECT_EQ(count, assigned.Find(L"moved"));
        EXPECT_EQ(count, assigned.Find(Name(5)));
    }
}

TEST(NamedSequence, AMovedFromSequenceCanBeUsedAgain) {
    Sequence source = LongSequence(500);
    const Sequence target = std::move(source);
    source.Clear(); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(0u, source.Size());
    EXPECT_EQ(0u, source.Find(Name(1)));
    for (unsigned i = 0; i < 500; ++i) source.Append(Name(i), static_cast<int>(i));
    ExpectFindsBothWays(source, 500);
    ExpectFinds(target, 500);
}

TEST(NamedSequence, CopiesAreIndependentWhateverTheirLengths) {
    for (const unsigned from : kSizes)
        for (const unsigned to : kSizes) {
            Sequence original = LongSequence(from);
            Sequence copy(original);
            ASSERT_NO_FATAL_FAILURE(ExpectFindsBothWays(copy, from));
            Sequence assigned = LongSequence(to);
            ASSERT_EQ(to, assigned.Find(L"missing"));
            assigned = original;
            ASSERT_NO_FATAL_FAILURE(ExpectFindsBothWays(assigned, from));
            Sequence moved = LongSequence(to);
            moved = std::move(copy);
            ASSERT_NO_FATAL_FAILURE(ExpectFindsBothWays(moved, from));
            if (from > 0) {
                assigned[0].Rename(L"changed");
                moved[from - 1].Rename(L"changed");
                ASSERT_EQ(0u, assigned.Find(L"changed"));
                ASSERT_EQ(from - 1, moved.Find(L"changed"));
            }
            ASSERT_NO_FATAL_FAILURE(ExpectFindsBothWays(original, from));
        }
}

TEST(NamedSequence, SelfAssignmentChangesNothing) {
    Sequence sequence = LongSequence(100);
    const Sequence& self = sequence;
    sequence = self;
    ExpectFindsBothWays(sequence, 100);
    sequence[3].Rename(L"three");
    EXPECT_EQ(3u, sequence.Find(L"three"));
}

TEST(NamedSequence, ElementsCopiedOutOrSwappedDoNotConfuseTheIndex) {
    Sequence sequence = LongSequence(100);
    ASSERT_EQ(5u, sequence.Find(Name(5)));
    {
        Item outside = sequence[5];
        outside.Rename(L"outside");
        EXPECT_EQ(5u, sequence.Find(Name(5)));
        EXPECT_EQ(100u, sequence.Find(L"outside"));
        sequence[6] = outside;
    }
    EXPECT_EQ(6u, sequence.Find(L"outside"));
    EXPECT_EQ(100u, sequence.Find(Name(6)));
    std::swap(sequence[10], sequence[90]);
    EXPECT_EQ(90u, sequence.Find(Name(10)));
    EXPECT_EQ(10u, sequence.Find(Name(90)));
    sequence[20] = sequence[21];
    EXPECT_EQ(20u, sequence.Find(Name(21)));
    EXPECT_EQ(100u, sequence.Find(Name(20)));
}

TEST(NamedSequence, AnElementOutlivesTheSequenceAsACopy) {
    std::vector<Item> copies;
    {
        Sequence sequence = LongSequence(100);
        ASSERT_EQ(1u, sequence.Find(Name(1)));
        copies.push_back(sequence[1]);
        copies.push_back(std::move(sequence[2]));
    }
    for (Item& copy : copies) copy.Rename(L"alive"); // must not tell an index that is gone
    EXPECT_EQ(L"alive", copies[1].GetName().String());
}

TEST(NamedSequence, NamesOfEqualHashAreToldApart) {
    ASSERT_FALSE(CollidingNames().empty());
    Sequence sequence = LongSequence(100);
    for (const auto& [first, second] : CollidingNames()) sequence.Append(first, 0);
    for (const auto& [first, second] : CollidingNames()) {
        EXPECT_LT(sequence.Find(first), sequence.Size());
        EXPECT_EQ(sequence.Size(), sequence.Find(second));
    }
}

TEST(NamedSequence, OddNamesAreFound) {
    const std::vector<std::wstring> odd = {L"",
                                           L" ",
                                           std::wstring(1, L'\0'),
                                           std::wstring(2, L'\0'),
                                           std::wstring(L"a\0b", 3),
                                           std::wstring(L"a\0c", 3),
                                           L"\u00E4",
                                           L"\u00FF",
                                           L"\u00B5",
                                           L"\u03C9",
                                           L"\U0001F6A2",
                                           std::wstring(5000, L'x'),
                                           std::wstring(5001, L'x')};
    for (const unsigned before : {0u, 100u}) {
        Sequence sequence = LongSequence(before);
        for (const std::wstring& name : odd) sequence.Append(name, 0);
        for (std::size_t i = 0; i < odd.size(); ++i) EXPECT_EQ(before + i, sequence.Find(odd[i]));
        EXPECT_EQ(before + 6, sequence.Find(L"\u00C4"));
        EXPECT_EQ(sequence.Size(), sequence.Find(L"\u0178"));
        EXPECT_EQ(sequence.Size(), sequence.Find(L"\u03A9"));
        EXPECT_EQ(before + 11, sequence.Find(std::wstring(5000, L'X')));
    }
}

TEST(NamedSequence, RandomOperationsMatchAPlainVector) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        Random random(seed);
        Sequence sequence;
        Model model;
        const unsigned names = seed % 2 ? 20 : 400; // few names give many duplicates
        const auto anyName = [&] {
            std::wstring name = Name(random.Below(names));
            for (wchar_t& c : name)
                if (random.OnceIn(2)) c = ToUpperW(c);
            return name;
        };
        int number = 0;
        const unsigned rounds = 4000;
        for (unsigned round = 0; round < rounds; ++round) {
            const bool shrinks = round / 400 % 3 == 2;
            const unsigned choice = random.Below(100);
            const std::size_t size = model.items.size();
            if (choice < (shrinks ? 8u : 40u)) {
                const std::wstring name = anyName();
                sequence.Append(name, ++number);
                model.items.emplace_back(name, number);
            } else if (choice < 55 && size > 0) {
                const std::size_t position = random.OnceIn(3) ? 0 : random.Below(size);
                sequence.Remove(position);
                model.items.erase(model.items.begin() + static_cast<std::ptrdiff_t>(position));
            } else if (choice < 70 && size > 0) {
                const std::size_t position = random.Below(size);
                const std::wstring name = anyName();
                sequence[position].Rename(name);
                model.items[position].first = name;
            } else if (choice < 73) {
                Sequence copy(sequence);
                sequence = copy;
            } else if (choice < 76) {
                Sequence moved(std::move(sequence));
                sequence = std::move(moved);
            } else if (choice < 79 && size > 1) {
                const std::size_t a = random.Below(size), b = random.Below(size);
                std::swap(sequence[a], sequence[b]);
                std::swap(model.items[a], model.items[b]);
            } else if (choice < 82 && size > 1) {
                const std::size_t a = random.Below(size), b = random.Below(size);
                sequence[a] = Item(sequence[b]);
                model.items[a] = model.items[b];
            } else if (choice == 99 && random.OnceIn(20)) {
                sequence.Clear();
                model.items.clear();
            }
            const std::wstring sought = anyName();
            const std::size_t expected = model.Find(sought);
            if (random.OnceIn(2)) {
                ASSERT_EQ(expected, std::as_const(sequence).Find(sought)) << seed;
            }
            if (random.OnceIn(2)) {
                ASSERT_EQ(expected, sequence.Find(sought)) << seed;
            }
        }
        ASSERT_EQ(model.items.size(), sequence.Size());
        for (std::size_t i = 0; i < model.items.size(); ++i) {
            ASSERT_EQ(model.items[i].first, sequence[i].GetName().String());
            ASSERT_EQ(model.items[i].second, sequence[i].Number());
        }
    }
}

namespace {

/// The positions 0 to `count` - 1 in the orders in which a host might go through them.
std::vector<std::pair<const char*, std::vector<unsigned>>> Orders(unsigned count) {
    std::vector<unsigned> front(count);
    std::iota(front.begin(), front.end(), 0u);
    std::vector<unsigned> shuffled = front, outward = front;
    Random random(count);
    for (std::size_t i = count; i > 1; --i) std::swap(shuffled[i - 1], shuffled[random.Below(i)]);
    std::rotate(outward.begin(), outward.begin() + count / 2, outward.end());
    return {{"front to back", front},
            {"back to front", {front.rbegin(), front.rend()}},
            {"shuffled", shuffled},
            {"from the middle", outward}};
}

/// Looks at names and moves of elements while `act` runs.
template <typename Act> std::size_t StepsOf(Act act) {
    Item::looks = Item::moves = 0;
    act();
    return Item::looks + Item::moves;
}

constexpr std::size_t kFewSteps = 12; // for each element; a short sequence is scanned and moved up

} // namespace

TEST(NamedSequence, RemovingOneByOneTakesAFewStepsEachInEveryOrder) {
    for (const unsigned count : {500u, 5000u, 16000u})
        for (const auto& [name, order] : Orders(count)) {
            Sequence sequence = LongSequence(count);
            EXPECT_LT(StepsOf([&] {
                          for (const unsigned i : order) sequence.Remove(sequence.Find(Name(i)));
                      }),
                      kFewSteps * count)
                << count << ' ' << name;
            EXPECT_EQ(0u, sequence.Size());
        }
}

TEST(NamedSequence, RemovingByPositionTakesAFewStepsEach) {
    constexpr unsigned kCount = 16000;
    for (const bool front : {false, true}) {
        Sequence sequence = LongSequence(kCount);
        EXPECT_LT(StepsOf([&] {
                      while (sequence.Size() > 0) sequence.Remove(front ? 0 : sequence.Size() - 1);
                  }),
                  kFewSteps * kCount);
    }
}

TEST(NamedSequence, RemovingAmongLookUpsAndAppendsTakesAFewStepsEach) {
    constexpr unsigned kCount = 16000;
    for (const auto& [name, order] : Orders(kCount)) {
        Sequence sequence = LongSequence(kCount);
        EXPECT_LT(StepsOf([&] {
                      for (const unsigned i : order) { // as a host does that moves keys to the end
                          sequence.Remove(sequence.Find(Name(i)));
                          ASSERT_EQ(sequence.Size(), sequence.Find(Name(i)));
                          sequence.Append(Name(i), -1);
                          ASSERT_EQ(sequence.Size() - 1, std::as_const(sequence).Find(Name(i)));
                      }
                  }),
                  kFewSteps * kCount)
            << name;
    }
}

TEST(NamedSequence, RemovingTheFirstOfManyEqualNamesTakesAFewSteps) {
    constexpr unsigned kCount = 16000;
    Sequence sequence;
    for (unsigned i = 0; i < kCount; ++i) sequence.Append(i % 2 ? Name(i) : L"same", static_cast<int>(i));
    EXPECT_LT(StepsOf([&] {
                  for (unsigned i = 0; i < kCount / 2; ++i) {
                      const std::size_t first = sequence.Find(L"same");
                      ASSERT_EQ(i, first);
                      sequence.Remove(first);
                  }
              }),
              kFewSteps * kCount);
    EXPECT_EQ(sequence.Size(), sequence.Find(L"same"));
    EXPECT_EQ(kCount / 2, sequence.Size());
}

TEST(NamedSequence, RenamingOneByOneTakesAFewStepsEachInEveryOrder) {
    for (const unsigned count : {500u, 16000u})
        for (const auto& [name, order] : Orders(count)) {
            Sequence sequence = LongSequence(count);
            EXPECT_LT(StepsOf([&] {
                          for (const unsigned i : order) {
                              sequence[sequence.Find(Name(i))].Rename(L"new" + Name(i));
                              ASSERT_EQ(i, std::as_const(sequence).Find(L"NEW" + Name(i)));
                              ASSERT_EQ(count, sequence.Find(Name(i)));
                          }
                      }),
                      kFewSteps * count)
                << count << ' ' << name;
        }
}

TEST(NamedSequence, ConstLookUpsMayRunInSeveralThreads) {
    Sequence sequence = LongSequence(2000);
    sequence[7].Rename(L"renamed");
    sequence.Append(L"later", 0);
    sequence.Append(L"later", 0);
    sequence.Remove(
        sequence.Find(L"later")); // where the second stands is not known yet: no reader may note it
    const Sequence& shared = sequence;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (unsigned i = 0; i < 2000; i += 20) EXPECT_EQ(i, shared.Find(Name(i)));
            EXPECT_EQ(7u, shared.Find(L"renamed"));
            EXPECT_EQ(2000u, shared.Find(L"later"));
        });
    for (std::thread& thread : threads) thread.join();
}

// The same through the classes that hosts see.

TEST(NamedSequence, ASectionsKeyOverwrittenThroughAHeldReferenceIsFound) {
    Section section(L"s");
    for (unsigned i = 0; i < 200; ++i) section.AddKey(Name(i));
    SectionKey& held = section[Name(50)];
    held = SectionKey(L"new");
    EXPECT_TRUE(section.HasKey(L"new"));
    EXPECT_FALSE(section.HasKey(Name(50)));
    EXPECT_EQ(&held, &section[L"new"]);
    section[Name(50)] << 1;
    EXPECT_EQ(201, section.NumKeys());
}

TEST(NamedSequence, AFilesSectionRenamedThroughAHeldReferenceIsFound) {
    IniFile file;
    for (unsigned i = 0; i < 200; ++i) file[Name(i)];
    Section& held = file[Name(50)];
    held.SetName(HashedString<wchar_t>(L"new"));
    EXPECT_TRUE(file.HasSection(L"NEW"));
    EXPECT_FALSE(file.HasSection(Name(50)));
    EXPECT_EQ(&held, &file[L"new"]);
    IniFile moved(std::move(file));
    held.SetName(HashedString<wchar_t>(L"newer"));
    EXPECT_EQ(&held, &moved[L"newer"]);
    EXPECT_FALSE(moved.HasSection(L"new"));
}

TEST(NamedSequence, ASectionAssignedIntoAFileBringsItsKeysAndItsName) {
    IniFile file;
    for (unsigned i = 0; i < 100; ++i) file[Name(i)][L"k"] << static_cast<int>(i);
    Section other(L"other");
    for (unsigned i = 0; i < 100; ++i) other.AddKey(Name(i));
    file[3] = other;
    EXPECT_EQ(&file[3], &file[L"other"]);
    EXPECT_FALSE(file.HasSection(Name(3)));
    for (unsigned i = 0; i < 100; ++i) ASSERT_TRUE(file[3].HasKey(Name(i)));
    file[4] = std::move(other);
    EXPECT_EQ(&file[3], &file[L"other"]);
    file.RemoveSection(L"other");
    EXPECT_TRUE(file.HasSection(L"other"));
    for (unsigned i = 0; i < 100; ++i) ASSERT_TRUE(file[L"other"].HasKey(Name(i)));
}

TEST(NamedSequence, ALongCopyIsSearchedLikeItsOriginal) {
    constexpr int kKeys = 300000; // scans for each of these names would take longer than a test may
    const auto name = [](int i) { return L"key" + std::to_wstring(i); };
    Section original(L"s");
    for (int i = 0; i < kKeys; ++i) original.AddKey(name(i));
    IniFile file;
    file.AddSection(original);
    Section assigned(L"other");
    assigned = original;
    for (int i = 0; i < kKeys; ++i) {
        file[L"s"][name(i)] << i;
        assigned[name(i)] << i;
        ASSERT_TRUE(std::as_const(file)[L"s"][name(i)].IsValid());
    }
    EXPECT_EQ(kKeys, file[L"s"].NumKeys());
}
