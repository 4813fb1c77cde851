// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/ListView.h"

#include "Framework/windows/DpiCor.h"
#include "Framework/windows/win32/private/TodaysLook.h"

#include <algorithm>
#include <utility>

struct Win32ListView::Rows {
    struct Row {
        std::vector<std::wstring> texts;
        int image = -1;
    };

    std::vector<Row> rows;
    std::vector<int> columns; // how wide each is at least
    CImageList images;
    bool isTelling = true;
    bool isQuiet = false;                    // the program changes the selection
    bool willTell = false;                   // that the user has changed it
    bool losesSelection = false;             // which is told when isTelling is true again
    std::shared_ptr<struct _IMAGELIST> room; // of a picture, in each row

    const Row* At(int row) const {
        return row >= 0 && static_cast<std::size_t>(row) < rows.size() ? &rows[static_cast<std::size_t>(row)]
                                                                       : nullptr;
    }
};

namespace {

using Rows = Win32ListView::Rows;

// To the list itself: the user has changed the selection. A click on one row that takes others away is
// several changes to the system, and one to the owner.
constexpr UINT kTellSelection = WM_APP;

constexpr int kSwatchMargin = 4; // to the text, in pixels of 96 to the inch

// What the control asks for to show a row.
void Answer(const Rows& rows, LVITEMW& item) {
    const Rows::Row* const row = rows.At(item.iItem);
    if ((item.mask & LVIF_IMAGE) != 0) {
        const bool hasImage =
            row && item.iSubItem == 0 && row->image >= 0 && row->image < rows.images.GetImageCount();
        item.iImage = hasImage ? 0 : I_IMAGENONE;
    }
    if ((item.mask & LVIF_TEXT) == 0) return;
    const auto column = static_cast<std::size_t>(item.iSubItem);
    // The control reads it before anything can change it.
    const std::wstring& text = row && column < row->texts.size() ? row->texts[column] : std::wstring();
    if (item.cchTextMax <= 0) return;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
    std::copy_n(text.begin(), length, item.pszText);
    item.pszText[length] = L'\0';
}

// The row whose text begins with what the user types; -1 for none.
int Find(const Rows& rows, const NMLVFINDITEMW& sought) {
    if ((sought.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || !sought.lvfi.psz) return -1;
    const int count = static_cast<int>(rows.rows.size());
    const int length = static_cast<int>(std::wstring_view(sought.lvfi.psz).size());
    for (int i = 0; i < count; ++i) {
        const int row = (std::max(sought.iStart, 0) + i) % count;
        const std::vector<std::wstring>& texts = rows.At(row)->texts;
        if (!texts.empty() && static_cast<int>(texts[0].size()) >= length &&
            CompareStringOrdinal(texts[0].c_str(), length, sought.lvfi.psz, length, TRUE) == CSTR_EQUAL)
            return row;
    }
    return -1;
}

// There may be as many colours as rows, and a picture of each would take more than the system has.
LRESULT Draw(const Rows& rows, const NMLVCUSTOMDRAW& request) {
    const auto number = static_cast<int>(request.nmcd.dwItemSpec);
    switch (request.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
        return CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPOSTPAINT: {
        const Rows::Row* const row = rows.At(number);
        if (!row || row->image < 0 || row->image >= rows.images.GetImageCount()) return CDRF_DODEFAULT;
        RECT place = {};
        place.left = LVIR_ICON;
        if (!SendMessageW(request.nmcd.hdr.hwndFrom, LVM_GETITEMRECT, request.nmcd.dwItemSpec,
                          reinterpret_cast<LPARAM>(&place)))
            return CDRF_DODEFAULT;
        const int x = place.left;
        const int y = (place.top + place.bottom - rows.images.Height()) / 2;
        const RECT swatch = {x, y, x + rows.images.Width(), y + rows.images.Height()};
        const HBRUSH brush = CreateSolidBrush(rows.images.ColorAt(row->image) & 0xFFFFFF);
        FillRect(request.nmcd.hdc, &swatch, brush);
        ::DeleteObject(brush);
        return CDRF_DODEFAULT;
    }
    default:
        return CDRF_DODEFAULT;
    }
}

// The last column takes what room the others leave.
void StretchLastColumn(HWND list, const Rows& rows, int width) {
    if (rows.columns.empty()) return;
    const auto last = rows.columns.size() - 1;
    for (std::size_t i = 0; i < last; ++i)
        width -= static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, i, 0));
    SendMessageW(list, LVM_SETCOLUMNWIDTH, last, std::max(width, rows.columns[last]));
}

// Keys go from the row that has the mark: the first one when no other has it.
void MarkFirstRow(HWND list) {
    if (SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED) >= 0) return;
    LVITEMW first = {};
    first.state = first.stateMask = LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&first));
}

bool ChangesSelection(UINT before, UINT after) { return ((before ^ after) & LVIS_SELECTED) != 0; }

} // namespace

Win32ListView::Win32ListView(HWND list) : Win32Window(list, nullptr, true), m_rows(std::make_shared<Rows>()) {
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                 LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    WindowLink& link = Link();
    link.SetOnMessage([&link, rows = m_rows](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_SIZE) StretchLastColumn(link.Handle(), *rows, LOWORD(lParam));
        if (message != kTellSelection) return std::nullopt;
        if (std::exchange(rows->willTell, false)) link.Tell(LVN_ITEMCHANGED);
        return 0;
    });
    link.SetOnTold([&link, rows = m_rows](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY) return std::nullopt;
        const auto tellSelection = [&] {
            if (!rows->isQuiet && !rows->willTell)
                rows->willTell = PostMessageW(link.Handle(), kTellSelection, 0, 0) != 0;
        };
        switch (reinterpret_cast<const NMHDR*>(lParam)->code) {
        case LVN_GETDISPINFOW:
            Answer(*rows, reinterpret_cast<NMLVDISPINFOW*>(lParam)->item);
            return 0;
        case LVN_ODFINDITEMW:
            return Find(*rows, *reinterpret_cast<const NMLVFINDITEMW*>(lParam));
        case NM_CUSTOMDRAW:
            return Draw(*rows, *reinterpret_cast<const NMLVCUSTOMDRAW*>(lParam));
        case LVN_ITEMCHANGED: {
            const auto& change = *reinterpret_cast<const NMLISTVIEW*>(lParam);
            if (ChangesSelection(change.uOldState, change.uNewState)) tellSelection();
            return 0;
        }
        case LVN_ODSTATECHANGED: { // of several rows at once
            const auto& change = *reinterpret_cast<const NMLVODSTATECHANGE*>(lParam);
            if (ChangesSelection(change.uOldState, change.uNewState)) tellSelection();
            return 0;
        }
        case NM_DBLCLK:
            if (rows->At(reinterpret_cast<const NMITEMACTIVATE*>(lParam)->iItem)) link.Tell(NM_DBLCLK);
            return 0;
        case NM_SETFOCUS:
            MarkFirstRow(link.Handle());
            return std::nullopt;
        case LVN_KEYDOWN:
            MarkFirstRow(link.Handle());
            if (reinterpret_cast<const NMLVKEYDOWN*>(lParam)->wVKey == 'A' && GetKeyState(VK_CONTROL) < 0 &&
                GetKeyState(VK_MENU) >= 0) {
                LVITEMW all = {};
                all.state = all.stateMask = LVIS_SELECTED;
                SendMessageW(link.Handle(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1),
                             reinterpret_cast<LPARAM>(&all));
            }
            return 0;
        default:
            return std::nullopt;
        }
    });
}

void Win32ListView::InsertColumn(int column, const std::wstring& heading, int width) {
    if (!Get()) return;
    const int position = std::clamp(column, 0, ColumnCount());
    constexpr int kHeadingMargin = 16; // in pixels of 96 to the inch
    const auto needed =
        static_cast<int>(Send(LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(heading.c_str())));
    LVCOLUMNW description = {};
    description.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    description.pszText = const_cast<wchar_t*>(heading.c_str()); // which is copied
    description.cx = std::max(width, needed + DpiCor(kHeadingMargin));
    description.iSubItem = position;
    Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(position), reinterpret_cast<LPARAM>(&description));
    m_rows->columns.insert(m_rows->columns.begin() + position, description.cx);
    const auto place = static_cast<std::size_t>(position);
    for (Rows::Row& row : m_rows->rows)
        if (row.texts.size() > place) row.texts.insert(row.texts.begin() + position, std::wstring());
    for (int i = position + 1; i < ColumnCount(); ++i) { // they show the texts behind theirs now
        LVCOLUMNW moved = {};
        moved.mask = LVCF_SUBITEM;
        moved.iSubItem = i;
        Send(LVM_SETCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&moved));
    }
    Invalidate();
}

void Win32ListView::SetImages(const CImageList& images) {
    if (!Get()) return;
    const bool hasSize =
        images.Width() != m_rows->images.Width() || images.Height() != m_rows->images.Height();
    m_rows->images = images;
    if (hasSize && images.Width() > 0 && images.Height() > 0) {
        const auto before = m_rows->room;
        const int width = images.Width() + DpiCor(kSwatchMargin);
        m_rows->room = {ImageList_Create(width, images.Height(), ILC_COLOR24 | ILC_MASK, 1, 0),
                        [](HIMAGELIST list) { ImageList_Destroy(list); }};
        // An image of which everything is masked: its place is filled by Draw().
        const HDC screen = GetDC(nullptr);
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, images.Height());
        ReleaseDC(nullptr, screen);
        const std::vector<BYTE> bits(static_cast<std::size_t>((width + 15) / 16 * 2 * images.Height()), 0xFF);
        const HBITMAP mask = CreateBitmap(width, images.Height(), 1, 1, bits.data());
        ImageList_Add(m_rows->room.get(), bitmap, mask);
        ::DeleteObject(bitmap);
        ::DeleteObject(mask);
        Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(m_rows->room.get()));
    }
    Invalidate();
}

void Win32ListView::InsertRow(int row, const std::wstring& text, int image) {
    if (!Get()) return;
    const bool isBehindAll = row == Count();
    const std::vector<int> selected = m_rows->isTelling && !isBehindAll ? Selected() : std::vector<int>();
    m_rows->rows.insert(m_rows->rows.begin() + row, Rows::Row{{text}, image});
    if (!m_rows->isTelling) return;
    ShowCount();
    if (selected.empty() || selected.back() < row) return;
    m_rows->isQuiet = true; // it stays with its rows
    ClearSelection();
    for (const int before : selected) Select(before < row ? before : before + 1, true);
    m_rows->isQuiet = false;
}

void Win32ListView::SetTextAt(int row, int column, const std::wstring& text) {
    if (!Get() || column < 0 || column >= ColumnCount()) return;
    std::vector<std::wstring>& texts = m_rows->rows[static_cast<std::size_t>(row)].texts;
    if (texts.size() <= static_cast<std::size_t>(column)) texts.resize(static_cast<std::size_t>(column) + 1);
    texts[static_cast<std::size_t>(column)] = text;
    if (m_rows->isTelling) Send(LVM_REDRAWITEMS, static_cast<WPARAM>(row), row);
}

std::wstring Win32ListView::TextAt(int row, int column) const {
    if (!Get() || column < 0) return {};
    const std::vector<std::wstring>& texts = m_rows->rows[static_cast<std::size_t>(row)].texts;
    const auto position = static_cast<std::size_t>(column);
    return position < texts.size() ? texts[position] : std::wstring();
}

int Win32ListView::ImageAt(int row) const {
    return Get() ? m_rows->rows[static_cast<std::size_t>(row)].image : -1;
}

int Win32ListView::Count() const { return Get() ? static_cast<int>(m_rows->rows.size()) : 0; }

void Win32ListView::Remove(int first, int count) {
    if (!Get()) return;
    const std::vector<int> selected = m_rows->isTelling ? Selected() : std::vector<int>();
    m_rows->rows.erase(m_rows->rows.begin() + first, m_rows->rows.begin() + first + count);
    if (!m_rows->isTelling) return;
    const auto isRemoved = [=](int row) { return row >= first && row - first < count; };
    m_rows->isQuiet = true;
    const bool changes = !selected.empty() && selected.back() >= first;
    if (changes) ClearSelection();
    ShowCount();
    if (changes)
        for (const int row : selected) // it stays with its rows
            if (!isRemoved(row)) Select(row < first ? row : row - count, true);
    m_rows->isQuiet = false;
    if (std::ranges::any_of(selected, isRemoved)) TellSelection();
}

void Win32ListView::RemoveAll() {
    if (!Get()) return;
    const bool hadSelection = m_rows->isTelling && Send(LVM_GETSELECTEDCOUNT) > 0;
    m_rows->rows.clear();
    if (!m_rows->isTelling) return;
    m_rows->isQuiet = true;
    ClearSelection();
    ShowCount();
    m_rows->isQuiet = false;
    if (hadSelection) TellSelection();
}

void Win32ListView::SetRedraw(bool redraw) {
    if (!Get() || redraw == m_rows->isTelling) return;
    if (!redraw) {
        m_rows->losesSelection = Send(LVM_GETSELECTEDCOUNT) > 0;
        m_rows->isQuiet = true;
        ClearSelection(); // it would stand for what is no more
        m_rows->isTelling = false;
        Send(WM_SETREDRAW, FALSE);
        return;
    }
    m_rows->isTelling = true;
    ShowCount();
    Send(WM_SETREDRAW, TRUE);
    Invalidate();
    m_rows->isQuiet = false;
    if (std::exchange(m_rows->losesSelection, false)) TellSelection();
}

int Win32ListView::ColumnCount() const { return static_cast<int>(m_rows->columns.size()); }

void Win32ListView::ShowCount() const { Send(LVM_SETITEMCOUNT, m_rows->rows.size(), LVSICF_NOSCROLL); }

void Win32ListView::Select(int row, bool isSelected) const {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    item.state = isSelected ? LVIS_SELECTED : 0;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void Win32ListView::ClearSelection() const { Select(-1, false); }

void Win32ListView::TellSelection() {
    m_rows->willTell = false;
    Link().Tell(LVN_ITEMCHANGED);
}

std::vector<int> Win32ListView::Selected() const {
    std::vector<int> rows;
    if (!Get()) return rows;
    for (auto row = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED); row >= 0;
         row = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED))
        rows.push_back(static_cast<int>(row));
    return rows;
}

void Win32ListView::SelectOnly(int row) {
    if (!Get()) return;
    const std::vector<int> before = Selected();
    const bool isQuiet = std::exchange(m_rows->isQuiet, true);
    ClearSelection();
    if (row >= 0) {
        LVITEMW item = {};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        Send(LVM_SETSELECTIONMARK, 0, row);
        Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    }
    m_rows->isQuiet = isQuiet;
    if (!isQuiet && Selected() != before) TellSelection(); // last: whoever is told may delete this
}
