#include "UtilityDLL/settings/CRCFile.h"

#include "tests/support/TestFiles.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {
// Files may grow to this size; more of a write fails.
class SizeLimit {
public:
    explicit SizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};
} // namespace
TEST(CRCFile_Fault, AFullDiskShowsWhenFlushedAndLeavesAFileThatFailsItsCheck) {
    const TemporaryFolder folder;
    const std::string data(5000, 'x');
    for (const rlim_t limit : {rlim_t{100}, rlim_t{4999}, rlim_t{5000}, rlim_t{5003}}) {
        const std::wstring path = folder.File(std::to_wstring(limit));
        {
            const SizeLimit full(limit);
            CRCFile file;
            ASSERT_TRUE(file.Open(path, L"wb"));
            const bool written = file.Write(data.data(), 1, data.size()) == data.size();
            EXPECT_EQ(limit >= data.size(), written && file.Flush()) << limit;
        }
        CRCFile reader;
        EXPECT_FALSE(reader.Open(path, L"rb")) << limit;
    }
}
