#include "UtilityDLL/text/GDISelector.h"

GDISelector::GDISelector(CDC* dc, CGdiObject& object)
    : m_dc(dc), m_previous(CDC::SelectGdiObject(dc->m_hDC, object.m_hObject)) {}

GDISelector::GDISelector(CDC* dc, void* handle) : m_dc(dc) {
    if (const CGdiObject* const object = CGdiObject::FromHandle(handle))
        m_previous = CDC::SelectGdiObject(dc->m_hDC, object->m_hObject);
}

GDISelector::GDISelector(CDC* dc, int stockObject) : m_dc(dc) { dc->SelectStockObject(stockObject); }

GDISelector::~GDISelector() {
    if (m_previous) CDC::SelectGdiObject(m_dc->m_hDC, m_previous->m_hObject);
}
