// SPDX-License-Identifier: MIT
// Memory that runs out at any allocation: an exception or an error comes back, nothing leaks, and the objects
// can be used as before. Here only because the replaced operators reach into the libraries on POSIX systems
// alone.

#include "UtilityDLL/colors/DXFColorTable.h"
#include "UtilityDLL/presentation/DXFInfo.h"
#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "UtilityDLL/presentation/GeoGridInfo.h"
#include "UtilityDLL/presentation/GridInfo.h"
#include "UtilityDLL/presentation/LineInfo.h"
#include "UtilityDLL/settings/CRCFile.h"
#include "UtilityDLL/settings/FileChecksum.h"
#include "tests/support/IniFiles.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <malloc.h>
#include <new>

namespace {

// Allocations are counted and made to fail only while a test asks for it; nothing here runs in threads.
long long live = 0;
bool counting = false;
int untilFailure = 0; // 1: the next one fails
bool failForEver = false;
bool failed = false; // since it was last set back
std::size_t liveBytes = 0;
std::size_t peakBytes = 0; // since it was last set back

void* Allocate(std::size_t size, std::size_t alignment) {
    if (counting) {
        if (untilFailure > 0 && --untilFailure == 0) {
            failed = true;
            if (failForEver) untilFailure = 1;
            return nullptr;
        }
    }
    void* const memory = alignment > alignof(std::max_align_t)
                             ? std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)
                             : std::malloc(size > 0 ? size : 1);
    live += memory != nullptr;
    liveBytes += malloc_usable_size(memory);
    peakBytes = std::max(peakBytes, liveBytes);
    return memory;
}

void* AllocateOrThrow(std::size_t size, std::size_t alignment) {
    void* const memory = Allocate(size, alignment);
    if (!memory) throw std::bad_alloc();
    return memory;
}

void Free(void* memory) {
    live -= memory != nullptr;
    liveBytes -= malloc_usable_size(memory);
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size) { return AllocateOrThrow(size, 0); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size, 0); }
void* operator new(std::size_t size, std::align_val_t a) { return AllocateOrThrow(size, std::size_t(a)); }
void* operator new[](std::size_t size, std::align_val_t a) { return AllocateOrThrow(size, std::size_t(a)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size, 0); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size, 0); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }

namespace {

/// Runs `act` with the k-th allocation failing. True when it ended by itself, false when it threw.
bool Attempt(int k, bool forEver, const std::function<void()>& act) {
    untilFailure = k;
    failForEver = forEver;
    counting = true;
    bool ended = true;
    try {
        act();
    } catch (const std::bad_alloc&) {
        ended = false;
    }
    counting = false;
    untilFailure = 0;
    return ended;
}

/// For k = 1, 2, ... until `act` needs fewer than k allocations, once and from then on: `round` makes the
/// objects, has them used by the callback that it gets, checks them and lets them go without a leak.
using Faulty = std::function<bool(const std::function<void()>&)>;
void ExpectSurvival(const std::function<void(const Faulty&)>& round) {
    round([](const std::function<void()>& act) { // what is made once in a process is made now
        act();
        return true;
    });
    for (const bool forEver : {false, true}) {
        int failures = 0;
        for (int k = 1;; ++k) {
            SCOPED_TRACE(::testing::Message()
                         << "allocation " << k << (forEver ? " and all that follow" : ""));
            failed = false;
            const long long before = live;
            round([&](const std::function<void()>& act) { return Attempt(k, forEver, act); });
            ASSERT_EQ(before, live) << "leaked";
            if (::testing::Test::HasFailure()) return;
            if (!failed) break;
            ++failures;
        }
        EXPECT_GT(failures, 0) << "nothing was allocated, so nothing was shown";
    }
}

/// Every name is found where a plain search finds it, and what is not there is not found.
void ExpectConsistent(const Section& section) {
    for (int i = 0; i < section.NumKeys(); ++i) {
        int first = 0;
        while (!(section[first] == section[i])) ++first;
        ASSERT_EQ(&section[first], &section[section[i].GetName().String()]);
    }
    ASSERT_FALSE(section.HasKey(L"a name that is not there"));
}

void ExpectConsistent(const IniFile& file) {
    for (int i = 0; i < file.NumSections(); ++i) {
        ASSERT_EQ(&file[i], &file[file[i].GetName().String()]);
        ExpectConsistent(file[i]);
    }
    ASSERT_FALSE(file.HasSection(L"a name that is not there"));
}

std::wstring LongName(int i) { return L"a name that is longer than a small buffer " + std::to_wstring(i); }

Section LongSection(const std::wstring& name, int keys) {
    Section section(name);
    section.SetComments(L"a comment that is longer than a small buffer");
    for (int i = 0; i < keys; ++i)
        section.AddKey(SectionKey(HashedString<wchar_t>(LongName(i)),
                                  L"a value that is longer than a small buffer",
                                  L"a comment that is longer than a small buffer"));
    return section;
}

IniFile LongFile(int sections, int keys) {
    IniFile file;
    for (int i = 0; i < sections; ++i) file.AddSection(LongSection(LongName(i), keys));
    return file;
}

} // namespace

TEST(OutOfMemory, Open) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    ASSERT_TRUE(LongFile(36, 3).Save(path)); // enough sections for an index
    const PlainFile expected = Plain(IniFile(path));
    ExpectSurvival([&](const Faulty& faulty) {
        IniFile file;
        ErrorString result(false);
        const bool ended = faulty([&] { result = file.Open(path); });
        ExpectConsistent(file);
        if (ended && result) {
            ASSERT_EQ(expected.size(), static_cast<std::size_t>(file.NumSections()));
        }
        ASSERT_TRUE(file.Open(path));
        ASSERT_EQ(expected, Plain(file));
    });
}

TEST(OutOfMemory, OpenOfALongSection) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    ASSERT_TRUE(LongFile(1, 80).Save(path));
    ExpectSurvival([&](const Faulty& faulty) {
        IniFile file;
        ErrorString result(false);
        const bool ended = faulty([&] { result = file.Open(path); });
        ExpectConsistent(file);
        if (ended && result) {
            ASSERT_EQ(80, file[0].NumKeys());
        }
        file[L"new"][L"key"] << 1;
        ASSERT_TRUE(file.HasSection(L"new"));
    });
}

TEST(OutOfMemory, OpenOfABadFile) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    for (const char* bytes : {"[a]\nx=1\n[A]\n", "[a]\nx=1\n[]\n"}) {
        WriteBytes(path, bytes);
        ExpectSurvival([&](const Faulty& faulty) {
            IniFile file;
            ErrorString result(false);
            faulty([&] { result = file.Open(path); });
            ASSERT_FALSE(result);
            ASSERT_LE(file.NumSections(), 1);
        });
    }
}

TEST(OutOfMemory, Save) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    const IniFile file = LongFile(5, 5);
    const std::string old = "[old]\r\n", saved = SavedBytes(file);
    ExpectSurvival([&](const Faulty& faulty) {
        WriteBytes(path, old);
        ErrorString result(false);
        ASSERT_TRUE(faulty([&] { result = file.Save(path); })) << "thrown";
        ASSERT_EQ(result ? saved : old, ReadBytes(path));
        ASSERT_EQ(1u, folder.NumFiles());
        ASSERT_TRUE(file.Save(path));
        ASSERT_EQ(saved, ReadBytes(path));
    });
}

TEST(OutOfMemory, SaveInPlace) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    const IniFile file = LongFile(5, 5);
    const std::string old = "[old]\r\n", saved = SavedBytes(file);
    WriteBytes(path, old);
    std::filesystem::create_hard_link(NativePath(path), folder.Path() / "other.ini");
    ExpectSurvival([&](const Faulty& faulty) {
        WriteBytes(path, old);
        ErrorString result(false);
        ASSERT_TRUE(faulty([&] { result = file.Save(path); })) << "thrown";
        ASSERT_EQ(result ? saved : old, ReadBytes(path));
    });
}

TEST(OutOfMemory, SaveOfTheBaseLibrarysContainer) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.col");
    FileObject object;
    for (int i = 0; i < 5; ++i) object.SetItem(LongName(i), LongName(i), LongName(i), true);
    ASSERT_TRUE(object.Save(path, 0));
    const std::string old = "[old]\r\n", saved = ReadBytes(path);
    ExpectSurvival([&](const Faulty& faulty) {
        WriteBytes(path, old);
        bool result = false;
        ASSERT_TRUE(faulty([&] { result = object.Save(path, 0); })) << "thrown";
        ASSERT_EQ(result ? saved : old, ReadBytes(path));
        ASSERT_EQ(1u, folder.NumFiles());
    });
}

TEST(OutOfMemory, ALargeFileIsSavedInLittleMemory) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.ini");
    IniFile file; // a long name sets the column of short keys: 25 MB of blanks
    FileObject object;
    Section& section = file[L"s"];
    section.AddKey(std::wstring(5000, L'n'));
    for (int i = 0; i < 5000; ++i) section.AddKey(std::to_wstring(i));
    ASSERT_TRUE(file.Save(object));
    constexpr std::size_t kMost = 1 << 20;
    const auto peakOf = [](const std::function<bool()>& save) {
        peakBytes = liveBytes;
        const std::size_t before = liveBytes;
        EXPECT_TRUE(save());
        return peakBytes - before;
    };
    EXPECT_LT(peakOf([&] { return file.Save(path); }), kMost);
    EXPECT_LT(25'000'000u, std::filesystem::file_size(NativePath(path)));
    EXPECT_LT(peakOf([&] { return object.Save(path, 0); }), kMost);
    EXPECT_LT(25'000'000u, std::filesystem::file_size(NativePath(path)));
}

TEST(OutOfMemory, AddSection) {
    for (const std::wstring& name : {LongName(7), LongName(99)}) { // replaced, appended
        const Section section = LongSection(name, 40);
        ExpectSurvival([&](const Faulty& faulty) {
            IniFile file = LongFile(32, 2);
            bool added = false;
            faulty([&] { added = file.AddSection(section); });
            ExpectConsistent(file);
            ASSERT_GE(file.NumSections(), 32);
            ASSERT_LE(file.NumSections(), 33);
            if (added) {
                ASSERT_EQ(40, file[name].NumKeys());
            }
            for (int i = 0; i < 32; ++i) { // nothing is lost, and nothing is half replaced
                ASSERT_TRUE(file.HasSection(LongName(i)));
                const int keys = std::as_const(file)[LongName(i)].NumKeys();
                ASSERT_TRUE(keys == 2 || (name == LongName(i) && keys == 40)) << keys;
            }
            ASSERT_TRUE(file.AddSection(section));
            ASSERT_EQ(40, file[name].NumKeys());
            ExpectConsistent(file);
        });
    }
}

TEST(OutOfMemory, TheIndexOperatorOfASection) {
    for (const int keys : {0, 5, 31, 32, 33, 63, 64, 127, 128, 300}) {
        ExpectSurvival([&](const Faulty& faulty) {
            Section section = LongSection(L"s", keys);
            const std::wstring name = LongName(1000);
            faulty([&] { section[name] << L"another value that is longer than a small buffer"; });
            ASSERT_GE(section.NumKeys(), keys);
            ASSERT_LE(section.NumKeys(), keys + 1);
            ExpectConsistent(section);
            section[name] << 1;
            ASSERT_EQ(keys + 1, section.NumKeys());
            for (int i = 0; i < 40; ++i) section[LongName(2000 + i)] << i;
            ExpectConsistent(section);
        });
    }
}

TEST(OutOfMemory, TheIndexOperatorOfAFile) {
    for (const int sections : {0, 31, 32, 33, 64}) {
        ExpectSurvival([&](const Faulty& faulty) {
            IniFile file = LongFile(sections, 1);
            faulty([&] { file[LongName(1000)][LongName(1)] << 1; });
            ASSERT_GE(file.NumSections(), sections);
            ASSERT_LE(file.NumSections(), sections + 1);
            ExpectConsistent(file);
            file[LongName(1000)][LongName(1)] << 1;
            ASSERT_EQ(sections + 1, file.NumSections());
            ExpectConsistent(file);
        });
    }
}

TEST(OutOfMemory, RenamesThroughHeldReferences) {
    ExpectSurvival([&](const Faulty& faulty) {
        Section section = LongSection(L"s", 100);
        ASSERT_TRUE(section.HasKey(LongName(5)));
        faulty([&] {
            section[7] = SectionKey(LongName(500));
            section[L"a key that is not there and has a long name"] << 1;
            section.RemoveKey(LongName(3));
            (void)section[LongName(500)];
        });
        ExpectConsistent(section);
        section[8] = SectionKey(LongName(501));
        ASSERT_EQ(&section[8], &section[LongName(501)]);
        ExpectConsistent(section);
    });
}

TEST(OutOfMemory, RemovingAndRenamingOneByOne) {
    ExpectSurvival([&](const Faulty& faulty) {
        Section section = LongSection(L"s", 70);
        int removed = 0;
        faulty([&] {
            for (int i = 0; i < 60; i += 2) {
                removed += section.RemoveKey(LongName(i));
                section[i / 2] = SectionKey(LongName(100 + i));
            }
        });
        ASSERT_EQ(70 - removed, section.NumKeys());
        ExpectConsistent(section);
        section[1] = SectionKey(LongName(500));
        ASSERT_EQ(&section[1], &section[LongName(500)]);
        while (section.NumKeys() > 0) {
            ASSERT_TRUE(section.RemoveKey(section[section.NumKeys() / 2]));
            if (section.NumKeys() % 16 == 0) ExpectConsistent(section);
        }
    });
}

TEST(OutOfMemory, CopiesAndAssignments) {
    const Section source = LongSection(L"source", 60);
    ExpectSurvival([&](const Faulty& faulty) {
        Section target = LongSection(L"target", 50);
        ASSERT_TRUE(target.HasKey(LongName(1)));
        faulty([&] { target = source; });
        ExpectConsistent(target);
        target[3] = SectionKey(L"renamed");
        ASSERT_TRUE(target.HasKey(L"renamed"));
        faulty([&] { target << source; });
        ExpectConsistent(target);
        faulty([&] { Section copy(source); });
    });
}

TEST(OutOfMemory, Seals) {
    ExpectSurvival([&](const Faulty& faulty) {
        Section section = LongSection(L"s", 32);
        faulty([&] { section.AddChecksum(); });
        ExpectConsistent(section);
        bool modified = true;
        section.AddChecksum();
        ASSERT_EQ(33, section.NumKeys());
        if (faulty([&] { modified = section.IsModified(); })) {
            ASSERT_FALSE(modified);
        }
        ASSERT_FALSE(section.IsModified());
    });
}

TEST(OutOfMemory, RenameAndRemoveSection) {
    ExpectSurvival([&](const Faulty& faulty) {
        IniFile file = LongFile(40, 1);
        faulty([&] {
            file.RenameSection(LongName(3), LongName(300));
            file.RemoveSection(LongName(5));
        });
        ExpectConsistent(file);
        ASSERT_NE(file.HasSection(LongName(3)), file.HasSection(LongName(300)));
    });
}

TEST(OutOfMemory, TheBaseLibrarysContainer) {
    ExpectSurvival([&](const Faulty& faulty) {
        FileObject object;
        object.SetItem(LongName(1), LongName(1), LongName(1), true);
        IniFile file = LongFile(2, 2);
        faulty([&] { file.Save(object); });
        for (int i = 0; i < 2; ++i) // what failed half way can be done again
            object.SetItem(LongName(50), LongName(i), LongName(i), true);
        ASSERT_NE(nullptr, object.GetItem(LongName(50), LongName(1)));
        ASSERT_TRUE(file.Save(object));
        ASSERT_NE(nullptr, object.GetItem(LongName(1), LongName(0)));
        faulty([&] { file.Open(object); });
        ExpectConsistent(file);
        int position = 0;
        std::wstring name;
        int walked = 0;
        for (bool more = object.GetFirstSectionEntry(position, name); more;
             more = object.GetNextSectionEntry(position, name)) {
            ASSERT_NE(nullptr, object.GetSection(name));
            ++walked;
        }
        ASSERT_EQ(walked, object.NumSections());
    });
}

TEST(OutOfMemory, CheckedFiles) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.bin");
    ExpectSurvival([&](const Faulty& faulty) {
        CRCFile file;
        std::size_t written = 0;
        faulty([&] {
            if (file.Open(path, L"wb")) written = file.Write("some data", 1, 9);
        });
        file.Close();
        if (written == 9) {
            ErrorString result(false);
            if (faulty([&] { result = file.Open(path, L"rb"); })) {
                EXPECT_EQ(static_cast<bool>(result), file.IsOpen());
            }
            file.Close();
        }
        ASSERT_TRUE(file.Open(path, L"wb"));
        file.Close();
        faulty([&] { FileChecksum(path, 100); });
        faulty([&] { CRCFile::GetCRC(path); });
    });
}

TEST(OutOfMemory, RecordsInSections) {
    ExpectSurvival([](const Faulty& attempt) {
        TextInfo text;
        text.SetFont(L"A font with a name that is too long for its own string");
        GridInfo grid;
        grid.SetEastingMark(L"a mark that is too long for its own string as well");
        Section section(L"Title");
        const auto write = [&] {
            text.Write(section);
            text.Write(L"a prefix that is longer than short strings are", section);
            grid.Write(section);
            GeoGridInfo().Write(section);
            LineInfo().Write(section);
        };
        attempt(write);
        ExpectConsistent(section);
        write();
        TextInfo textBack;
        GridInfo gridBack;
        const auto read = [&] {
            textBack.Read(L"a prefix that is longer than short strings are", section);
            gridBack.Read(section);
        };
        attempt(read);
        read();
        EXPECT_TRUE(text == textBack);
        EXPECT_EQ(grid.EastingMark(), gridBack.EastingMark());
    });
}

TEST(OutOfMemory, OneLineForms) {
    ExpectSurvival([](const Faulty& attempt) {
        DepthLabelInfo label;
        label.SetFont(L"A font with a name that is too long for its own string");
        const std::wstring line = label.ToString();
        std::wstring written;
        DepthLabelInfo back;
        LineInfo lineInfo;
        DXFInfo dxf;
        const auto act = [&] {
            written = label.ToString();
            back.FromString(line);
            lineInfo.FromString(L"0.5,1,a style of a name that is long enough,255,0");
            dxf.FromString(L"2,1,300000000000000000000000000000,255");
        };
        attempt(act);
        act();
        EXPECT_EQ(line, written);
        EXPECT_TRUE(label == back);
        EXPECT_EQ(0xFFul, lineInfo.Color());
    });
}

TEST(OutOfMemory, ColorTableKeepsValuesAndColoursTogether) {
    const auto expectTogether = [](const ColorTable& table) {
        for (int i = 0; i < table.NumEntries(); ++i)
            ASSERT_EQ(static_cast<unsigned long>(table.EntryValue(i)), table.EntryColor(i));
    };
    DXFColorTable whole;
    for (int i = 1; i <= 20; ++i) whole.AddEntry(i, static_cast<unsigned long>(i));
    FileObject file;
    ASSERT_TRUE(static_cast<ColorTable&>(whole).FileSave(file));
    ExpectSurvival([&](const Faulty& attempt) {
        ColorTable added, read, assigned;
        assigned.AddEntry(7, 7);
        attempt([&] {
            for (int i = 20; i > 0; --i) added.AddEntry(i, static_cast<unsigned long>(i));
        });
        attempt([&] { read.FileOpen(file); });
        attempt([&] { assigned = whole; });
        added.AddEntry(99, 99);
        for (const ColorTable& table : {added, read, assigned}) expectTogether(table);
        EXPECT_TRUE(read.FileOpen(file));
        EXPECT_TRUE(whole == read);
    });
    ExpectSurvival([&](const Faulty& attempt) {
        DXFColorTable table = whole;
        attempt([&] { table.MakeDXFTable(); });
        (void)table[7.5];
        FileObject copy;
        attempt([&] { table.FileSave(copy); });
        table.MakeDXFTable();
        EXPECT_EQ(table[7.5].Index(), table.EntryDxfColor(0).Index());
    });
}

TEST(OutOfMemory, ClosingACheckedFileTakesNoMemory) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.bin");
    {
        CRCFile file;
        ASSERT_TRUE(file.Open(path, L"wb"));
        ASSERT_EQ(3u, file.Write("abc", 1, 3));
        EXPECT_TRUE(Attempt(1, true, [&] { file.Close(); })); // as the destructor does, which may not throw
    }
    EXPECT_TRUE(CRCFile().Open(path, L"rb"));
}

TEST(OutOfMemory, ACheckedFileThatCannotBeOpenedLeavesNoDescriptor) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.bin");
    {
        CRCFile file;
        ASSERT_TRUE(file.Open(path, L"wb"));
    }
    const auto numDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto before = numDescriptors();
    for (int k = 1; k < 10; ++k) {
        CRCFile file;
        Attempt(k, true, [&] { (void)file.Open(path, L"rb"); });
    }
    EXPECT_EQ(before, numDescriptors());
}
