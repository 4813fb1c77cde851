// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/GDISelector.h"

GDISelector::GDISelector(CDC* dc, CGdiObject& object) : m_dc(dc) { Select(object.m_hObject); }

GDISelector::GDISelector(CDC* dc, void* handle) : m_dc(dc) {
    if (const CGdiObject* const object = CGdiObject::FromHandle(handle)) Select(object->m_hObject);
}

GDISelector::GDISelector(CDC* dc, int stockObject) : m_dc(dc) { dc->SelectStockObject(stockObject); }

GDISelector::~GDISelector() {
    if (m_previous) CDC::SelectGdiObject(m_dc->m_hDC, m_previous);
}

void GDISelector::Select(HGDIOBJ object) {
    if (const CGdiObject* const previous = CDC::SelectGdiObject(m_dc->m_hDC, object))
        m_previous = previous->m_hObject;
}
