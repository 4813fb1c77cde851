#include "Framework/device/GdiObject.h"

#include <memory>
#include <unordered_map>

CGdiObject::~CGdiObject() {
    if (m_hObject) DeleteObject();
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ handle) {
    // Of a handle that others own, deleting the object must not delete it.
    struct Borrowed : CGdiObject {
        explicit Borrowed(HGDIOBJ borrowed) { m_hObject = borrowed; }
        ~Borrowed() override { m_hObject = nullptr; }
    };
    if (!handle) return nullptr;
    static thread_local std::unordered_map<HGDIOBJ, std::unique_ptr<Borrowed>> objects;
    std::unique_ptr<Borrowed>& object = objects[handle];
    if (!object) object = std::make_unique<Borrowed>(handle);
    return object.get();
}

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
