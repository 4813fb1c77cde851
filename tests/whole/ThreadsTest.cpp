// SPDX-License-Identifier: MIT
// Several threads may ask one object at once, as long as all calls are const, and each may work with objects
// of its own, also with copies that share their texts. Run under the thread sanitizer as well (./test
// --threads).

#include "UtilityDLL/GTL/Transformation2D.h"
#include "UtilityDLL/colors/DXFColorTable.h"
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "UtilityDLL/keywords/Keywords.h"
#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "UtilityDLL/presentation/MapInfo.h"
#include "UtilityDLL/settings/CRCFile.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/CRCChecksum.h"
#include "VelmBase/FormatString.h"
#include "VelmConfigure/DataSearch.h"
#include "tests/support/IniFiles.h"
#include "tests/support/StartLine.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr int kThreads = 4;

// What each of several threads, all begun at once, makes of `task(number of the thread)`.
template <typename Task> auto AtOnce(Task task) {
    StartLine start(kThreads);
    std::vector<decltype(task(0))> results(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            start.ArriveAndWait();
            results[static_cast<std::size_t>(t)] = task(t);
        });
    for (std::thread& thread : threads) thread.join();
    return results;
}

// That `task` gives the same in all threads at once and in one alone.
template <typename Task> void ExpectTheSameInAllThreads(Task task) {
    const auto results = AtOnce([&](int) { return task(); });
    const auto alone = task();
    for (const auto& result : results) EXPECT_EQ(alone, result);
}

std::wstring KeyName(int i) { return L"Key " + std::to_wstring(i); }

// A short section, one that is long enough for an index, and one whose index is out of date.
IniFile SomeFile() {
    IniFile file;
    for (const wchar_t* const name : {L"Short", L"Long", L"Renamed"})
        for (int i = 0; i < (name[0] == L'S' ? 5 : 200); ++i) {
            file[name][KeyName(i)] << i / 8.0;
            file[name][KeyName(i)].SetComments(L"eighths");
        }
    file[L"Renamed"].RemoveKey(KeyName(7));
    for (int i = 0; i < file.NumSections(); ++i) file[i].AddChecksum();
    return file;
}

// Everything that a const file tells.
std::wstring AllAnswers(const IniFile& file) {
    std::wstring answers;
    for (const wchar_t* const name : {L"SHORT", L"long", L"Renamed", L"none"}) {
        const Section& section = file[name];
        answers += section.GetName().String() + L' ' + std::to_wstring(section.ComputeChecksum());
        answers += section.IsModified() ? L" edited" : L" sealed";
        for (int i = 0; i < 210; i += 3) {
            double value = -1;
            section[KeyName(i)] >> value;
            answers += L' ' + std::to_wstring(value) + section[KeyName(i)].GetComments();
            if (section.HasKey(KeyName(i))) answers += L'!';
        }
    }
    return answers;
}

CKeywords SomeKeywords() {
    CKeywords keywords;
    for (int i = 0; i < 100; ++i) keywords.AddKeywordsInString(L"%" + KeyName(i) + L"%");
    return keywords;
}

std::wstring AllAnswers(const CKeywords& keywords) {
    std::wstring answers = keywords.ToString() + std::to_wstring(keywords.GetChecksum());
    for (int i = 0; i < 110; i += 3) {
        const CKeyword* const keyword = keywords.GetKeywordConst(KeyName(i));
        answers += keyword ? keyword->value + std::to_wstring(keyword->refCount) : L"none";
    }
    return answers;
}

std::wstring ErrorOfOpening(const std::wstring& path) {
    IniFile file;
    const ErrorString result = file.Open(path);
    return result.Text();
}

} // namespace

// The first of this program, so that tables and seeds are made here.
TEST(Threads, FirstUseOfEverythingMayBeAtOnce) {
    ExpectTheSameInAllThreads([] {
        const IniFile file = SomeFile();
        CRCChecksum sum;
        sum.Update(std::string(5000, 'x').data(), 5000);
        ContourDefinitionList contours;
        contours.Generate(0, 10, 0.5);
        return AllAnswers(file) + AllAnswers(SomeKeywords()) + std::to_wstring(sum.Value()) +
               std::to_wstring(DXFColor(RGBColor(200, 30, 40)).Index()) +
               std::to_wstring(contours.NumContours()) + ErrorOfOpening(L"no such file") +
               Section().GetComments() + FormatString(L',')[0] + TextInfo().ToString() +
               DataSearch::GetDataSearch().GetFilePath(1);
    });
}

TEST(Threads, AFileIsAskedByAll) {
    const IniFile file = SomeFile();
    ExpectTheSameInAllThreads([&] { return AllAnswers(file); });
}

TEST(Threads, AFileIsSavedByAllToPathsOfTheirOwn) {
    const IniFile file = SomeFile();
    const TemporaryFolder folder;
    const std::vector<std::string> saved = AtOnce([&](int thread) {
        const std::wstring path = folder.File(std::to_wstring(thread));
        return file.Save(path) ? ReadBytes(path) : "<not saved>";
    });
    for (const std::string& bytes : saved) EXPECT_EQ(SavedBytes(file), bytes);
}

TEST(Threads, CopiesThatShareTheirTextsAreChangedAndLetGo) {
    // The original is gone: the threads are the last owners.
    std::vector<IniFile> copies(kThreads, SomeFile());
    const std::vector<std::wstring> answers = AtOnce([&](int thread) {
        IniFile own = std::move(copies[static_cast<std::size_t>(thread)]);
        for (int i = 0; i < 50; ++i) {
            const IniFile another = own;
            own[L"Long"][KeyName(i)] << L"changed";
            own[L"Long"][KeyName(i)].SetComments(L"by one");
            if (another[L"Long"].IsModified() && i == 0) return std::wstring(L"a copy was changed");
        }
        own[L"Renamed"].SetName(L"Again");
        return AllAnswers(own);
    });
    for (const std::wstring& answer : answers) EXPECT_EQ(answers[0], answer);
    EXPECT_EQ(std::wstring::npos, answers[0].find(L"a copy was changed"));
}

TEST(Threads, KeywordsAreAskedByAll) {
    const CKeywords keywords = SomeKeywords();
    CKeywords handedOut = keywords;
    EXPECT_NE(nullptr, handedOut.GetKeyword(0));
    ExpectTheSameInAllThreads([&] { return AllAnswers(keywords) + AllAnswers(std::as_const(handedOut)); });
    ExpectTheSameInAllThreads([&] { return AllAnswers(CKeywords(handedOut)); });
}

TEST(Threads, RecordsAndTablesAreAskedByAll) {
    DXFColorTable table;
    for (int i = 0; i < 100; ++i) table.AddEntry(i / 4.0, static_cast<unsigned long>(i * 2000));
    table.MakeDXFTable();
    ContourDefinitionList contours;
    ASSERT_TRUE(contours.Generate(table, false));
    GTL::Transformation2D<GTL::Point2D<double>> turn;
    turn.Rotate(Angle(30), {1, 2});
    const DepthLabelInfo label;
    const CMapInfo map;
    ExpectTheSameInAllThreads([&] {
        std::wstring answers = label.ToString();
        Section section(L"Map");
        answers += map.Write(section) ? std::to_wstring(section.ComputeChecksum()) : L"none";
        for (int i = 0; i < 100; ++i) {
            GTL::Point2D<double> point(i, -i);
            turn.Apply(point);
            answers += L' ' + std::to_wstring(point.X()) + L' ' + std::to_wstring(table[i / 3.0].Index()) +
                       L' ' + std::to_wstring(contours.Find(i / 4.0));
        }
        return answers;
    });
}

TEST(Threads, AGuardedFileIsReadByAll) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"guarded.bin");
    const std::string data(100000, 'x');
    {
        CRCFile file;
        ASSERT_TRUE(file.Open(path, L"wb"));
        ASSERT_EQ(data.size(), file.Write(data.data(), 1, data.size()));
    }
    ExpectTheSameInAllThreads([&] {
        CRCFile file;
        std::string read(data.size(), ' ');
        if (!file.Open(path, L"rb")) return std::string("not opened");
        read.resize(file.Read(read.data(), 1, read.size()));
        return read;
    });
}
