// SPDX-License-Identifier: MIT
#include "Framework/device/GdiObject.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace {

// Of a handle that others own, deleting the object must not delete it.
struct Borrowed : CGdiObject {
    explicit Borrowed(HGDIOBJ borrowed) { m_hObject = borrowed; }
    ~Borrowed() override { m_hObject = nullptr; }
    bool isGone = false; // as it was seen last
};

/// The objects of one thread that stand for handles of others. Now and then those are forgotten whose handles
/// were found dead the time before, so that a loop over new handles does not fill the memory.
class BorrowedObjects {
public:
    CGdiObject* Get(HGDIOBJ handle) {
        auto found = m_objects.find(handle);
        if (found == m_objects.end()) {
            if (m_objects.size() >= m_enough) Forget();
            found = m_objects.try_emplace(handle, handle).first;
        }
        found->second.m_hObject = handle; // which deleting it took away, though stock objects live on
        return &found->second;
    }

private:
    void Forget() {
        for (auto entry = m_objects.begin(); entry != m_objects.end();) {
            const bool isGone = GetObjectType(entry->first) == 0;
            const bool wasGone = std::exchange(entry->second.isGone, isGone);
            entry = isGone && wasGone ? m_objects.erase(entry) : std::next(entry);
        }
        m_enough = std::max(kEnough, 2 * m_objects.size());
    }

    static constexpr std::size_t kEnough = 512;
    std::unordered_map<HGDIOBJ, Borrowed> m_objects;
    std::size_t m_enough = kEnough;
};

// Static objects of a host may ask when the thread that ends the process has destroyed what was its own: the
// pointer needs no destruction, and those objects then last.
thread_local BorrowedObjects* objectsOfThread = nullptr;
struct AtEndOfThread {
    ~AtEndOfThread() {
        delete objectsOfThread;
        objectsOfThread = nullptr;
    }
};

BorrowedObjects& Objects() {
    if (!objectsOfThread) {
        static thread_local const AtEndOfThread end;
        objectsOfThread = new BorrowedObjects;
    }
    return *objectsOfThread;
}

} // namespace

CGdiObject::~CGdiObject() {
    if (m_hObject) DeleteObject();
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ handle) { return handle ? Objects().Get(handle) : nullptr; }

bool CGdiObject::DeleteObject() {
    const HGDIOBJ object = m_hObject;
    m_hObject = nullptr;
    return object && ::DeleteObject(object);
}

bool CFont::CreateFontW(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                        BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision,
                        BYTE quality, BYTE pitchAndFamily, const wchar_t* face) {
    if (m_hObject) return false;
    m_hObject = ::CreateFontW(height, width, escapement, orientation, weight, italic, underline, strikeOut,
                              charSet, outPrecision, clipPrecision, quality, pitchAndFamily, face);
    return m_hObject != nullptr;
}

bool CBrush::CreateSolidBrush(COLORREF color) {
    if (m_hObject) return false;
    m_hObject = ::CreateSolidBrush(color);
    return m_hObject != nullptr;
}
