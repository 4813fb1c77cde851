// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/Layout.h"

#include "Framework/windows/DpiCor.h"

#include <algorithm>
#include <climits>
#include <commctrl.h>
#include <iterator>
#include <string>

// The sizes and distances are those that the system's guidelines for dialogs ask for, in dialog units.
namespace {

constexpr int kMargin = 7;
constexpr int kSpacing = 4;
constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 14;
constexpr int kFieldWidth = 60;
constexpr int kFieldHeight = 13;
constexpr int kCheckHeight = 10;
constexpr int kCheckMark = 12; // with its distance from the text
constexpr int kBoxArrow = 14;  // of a drop-down list
constexpr int kSwatch = 18;    // with its distances
constexpr int kTextHeight = 8;
constexpr int kGroupTitle = 11; // from its top to what is in it
constexpr int kArrowsWidth = 11;
constexpr int kRows = 12;
constexpr int kFewestRows = 4;

constexpr int kCellMargin = 14; // on both sides of a list's texts, in pixels of 96 to the inch

bool IsRow(DialogItem::Kind kind) { return kind == DialogItem::ROW; }

// Without the marks of the letters for the keyboard.
std::wstring Seen(const std::wstring& text) {
    std::wstring seen;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && i + 1 < text.size()) ++i;
        seen += text[i];
    }
    return seen;
}

// What the last column lacks to show the first rows whole.
int LackingInLastColumn(HWND list, int column, int rows) {
    const auto count = std::min(rows, static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)));
    int widest = 0;
    for (int row = 0; row < count; ++row) {
        wchar_t text[260] = L"";
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = static_cast<int>(std::size(text));
        SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        const auto width = static_cast<int>(
            SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(item.pszText)));
        widest = std::max(widest, width + DpiCor(kCellMargin));
    }
    const auto width =
        static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
    return std::max(0, widest - width);
}

// A list without rows tells no height of one, so that it has one for the question.
LONG RowHeight(HWND list) {
    constexpr LPARAM quietly = LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL;
    const bool isEmpty = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == 0;
    if (isEmpty) SendMessageW(list, LVM_SETITEMCOUNT, 1, quietly);
    RECT row = {LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    if (isEmpty) SendMessageW(list, LVM_SETITEMCOUNT, 0, quietly);
    return row.bottom - row.top;
}

LONG HeaderHeight(HWND header) {
    RECT room = {0, 0, SHRT_MAX, SHRT_MAX};
    WINDOWPOS place = {};
    HDLAYOUT layout = {&room, &place};
    SendMessageW(header, HDM_LAYOUT, 0, reinterpret_cast<LPARAM>(&layout));
    return place.cy;
}

SIZE ListSize(HWND list, int rows) {
    const HWND header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const auto columns = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    int width = 0;
    for (int i = 0; i < columns; ++i)
        width += static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(i), 0));
    if (columns > 0) width += LackingInLastColumn(list, columns - 1, rows);
    return {width + GetSystemMetrics(SM_CXVSCROLL) + 2 * GetSystemMetrics(SM_CXEDGE) + DpiCor(2),
            HeaderHeight(header) + rows * RowHeight(list) + 2 * GetSystemMetrics(SM_CYEDGE)};
}

void Move(HWND window, const RECT& place) {
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// Of that height, in the middle of a place.
RECT Middle(const RECT& place, int height) {
    const LONG top = place.top + (place.bottom - place.top - height) / 2;
    return {place.left, top, place.right, top + height};
}

} // namespace

Layout::Layout(const DialogItem& content, const SharedFont& font,
               const std::function<Made(const DialogItem&)>& make)
    : m_font(font) {
    constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const SIZE letters = ExtentOf(kLetters, 52, font.get());
    m_base = {(letters.cx / 26 + 1) / 2, letters.cy};
    m_root = Make(content, make);
}

int Layout::Horizontal(int units) const { return MulDiv(units, m_base.cx, 4); }
int Layout::Vertical(int units) const { return MulDiv(units, m_base.cy, 8); }

Layout::Box Layout::Make(const DialogItem& item, const std::function<Made(const DialogItem&)>& make) const {
    Box box = {item.kind, Seen(item.text), make(item), {}, item.kind == DialogItem::LIST_VIEW, {}, {}};
    for (const DialogItem& part : item.items) {
        box.parts.push_back(Make(part, make));
        box.hasList = box.hasList || box.parts.back().hasList;
    }
    return box;
}

void Layout::MeasureLists(Box& box) {
    for (Box& part : box.parts) MeasureLists(part);
    if (box.kind != DialogItem::LIST_VIEW) return;
    box.fewRows = ListSize(box.made.control, kFewestRows);
    box.manyRows = ListSize(box.made.control, kRows);
}

SIZE Layout::Smallest() const {
    const SIZE size = SizeOf(m_root, false);
    return {size.cx + 2 * Horizontal(kMargin), size.cy + 2 * Vertical(kMargin)};
}

SIZE Layout::Preferred() const {
    const SIZE size = SizeOf(m_root, true);
    return {size.cx + 2 * Horizontal(kMargin), size.cy + 2 * Vertical(kMargin)};
}

SIZE Layout::SizeOf(const Box& box, bool isPreferred) const {
    const int text = ExtentOf(box.text.c_str(), static_cast<int>(box.text.size()), m_font.get()).cx;
    switch (box.kind) {
    case DialogItem::COLUMN:
    case DialogItem::ROW:
        return SizeOfParts(box, IsRow(box.kind), isPreferred);
    case DialogItem::FORM:
        return SizeOfForm(box);
    case DialogItem::GROUP: {
        const SIZE inside = SizeOfParts(box, false, isPreferred);
        return {std::max<LONG>(inside.cx, text + Horizontal(kMargin)) + 2 * Horizontal(kMargin),
                inside.cy + Vertical(kGroupTitle) + Vertical(kMargin)};
    }
    case DialogItem::SPACE:
        return {};
    case DialogItem::LABEL:
        return {text, Vertical(kTextHeight)};
    case DialogItem::EDIT:
        return {Horizontal(kFieldWidth), Vertical(kFieldHeight)};
    case DialogItem::SPIN_EDIT:
        return {Horizontal(kFieldWidth) + Horizontal(kArrowsWidth), Vertical(kFieldHeight)};
    case DialogItem::CHECK_BOX:
        return {Horizontal(kCheckMark) + text, Vertical(kCheckHeight)};
    case DialogItem::DROP_DOWN_LIST: {
        SIZE size = {Horizontal(kFieldWidth), Vertical(kFieldHeight)};
        RECT closed = {};
        GetWindowRect(box.made.control, &closed);
        size.cy = std::max(size.cy, closed.bottom - closed.top);
        const auto count = static_cast<int>(SendMessageW(box.made.control, CB_GETCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            const auto length = SendMessageW(box.made.control, CB_GETLBTEXTLEN, static_cast<WPARAM>(i), 0);
            std::wstring entry(static_cast<std::size_t>(std::max<LRESULT>(0, length)), L' ');
            SendMessageW(box.made.control, CB_GETLBTEXT, static_cast<WPARAM>(i),
                         reinterpret_cast<LPARAM>(entry.data()));
            const SIZE extent = ExtentOf(entry.c_str(), static_cast<int>(entry.size()), m_font.get());
            size.cx = std::max<LONG>(size.cx, extent.cx + Horizontal(kBoxArrow));
        }
        return size;
    }
    case DialogItem::LIST_VIEW:
        return isPreferred ? box.manyRows : box.fewRows;
    case DialogItem::COLOR_WELL:
        return {Horizontal(kSwatch) + text + Horizontal(kMargin), Vertical(kButtonHeight)};
    case DialogItem::PUSH_BUTTON:
    case DialogItem::DEFAULT_BUTTON:
        return {std::max<LONG>(Horizontal(kButtonWidth), text + 2 * Horizontal(kMargin)),
                Vertical(kButtonHeight)};
    }
    return {};
}

SIZE Layout::SizeOfParts(const Box& box, bool isRow, bool isPreferred) const {
    SIZE all = {};
    for (const Box& part : box.parts) {
        const SIZE size = SizeOf(part, isPreferred);
        const bool isFirst = &part == &box.parts.front();
        if (isRow) {
            all.cx += size.cx + (isFirst ? 0 : Horizontal(kSpacing));
            all.cy = std::max(all.cy, size.cy);
        } else {
            all.cx = std::max(all.cx, size.cx);
            all.cy += size.cy + (isFirst ? 0 : Vertical(kSpacing));
        }
    }
    return all;
}

int Layout::WidthOfLabels(const Box& form) const {
    int width = 0;
    for (std::size_t i = 0; i + 1 < form.parts.size(); i += 2)
        width = std::max(width, static_cast<int>(SizeOf(form.parts[i], true).cx));
    return width;
}

SIZE Layout::SizeOfForm(const Box& box) const {
    SIZE fields = {};
    for (std::size_t i = 0; i + 1 < box.parts.size(); i += 2) {
        const SIZE field = SizeOf(box.parts[i + 1], true);
        fields.cx = std::max(fields.cx, field.cx);
        fields.cy += std::max(field.cy, SizeOf(box.parts[i], true).cy) + (i == 0 ? 0 : Vertical(kSpacing));
    }
    return {WidthOfLabels(box) + Horizontal(kSpacing) + fields.cx, fields.cy};
}

void Layout::Place(SIZE inside) const {
    PlaceBox(m_root, {Horizontal(kMargin), Vertical(kMargin), inside.cx - Horizontal(kMargin),
                      inside.cy - Vertical(kMargin)});
}

void Layout::PlaceBox(const Box& box, RECT place) const {
    switch (box.kind) {
    case DialogItem::COLUMN:
    case DialogItem::ROW:
        return PlaceParts(box, IsRow(box.kind), place);
    case DialogItem::FORM:
        return PlaceForm(box, place);
    case DialogItem::GROUP:
        Move(box.made.control, place);
        return PlaceParts(box, false,
                          {place.left + Horizontal(kMargin), place.top + Vertical(kGroupTitle),
                           place.right - Horizontal(kMargin), place.bottom - Vertical(kMargin)});
    case DialogItem::SPACE:
        return;
    case DialogItem::SPIN_EDIT: {
        RECT field = place;
        field.right -= Horizontal(kArrowsWidth);
        Move(box.made.control, field);
        return Move(box.made.arrows, {field.right, place.top, place.right, place.bottom});
    }
    case DialogItem::DROP_DOWN_LIST: // its height is that of the list that drops down
        place.bottom = place.top + DpiCor(200);
        return Move(box.made.control, place);
    default:
        return Move(box.made.control, place);
    }
}

// What room is left goes to what holds a list, else to the spaces.
void Layout::PlaceParts(const Box& box, bool isRow, RECT place) const {
    const SIZE needed = SizeOfParts(box, isRow, false);
    const LONG left = std::max<LONG>(0, isRow ? place.right - place.left - needed.cx
                                              : place.bottom - place.top - needed.cy);
    const auto takes = [&](const Box& part) {
        return box.hasList ? part.hasList : part.kind == DialogItem::SPACE;
    };
    const auto takers = static_cast<LONG>(std::ranges::count_if(box.parts, takes));
    LONG at = isRow ? place.left : place.top;
    for (const Box& part : box.parts) {
        const SIZE size = SizeOf(part, false);
        const LONG end = at + (isRow ? size.cx : size.cy) + (takes(part) ? left / takers : 0);
        PlaceBox(part,
                 isRow ? RECT{at, place.top, end, place.bottom} : RECT{place.left, at, place.right, end});
        at = end + (isRow ? Horizontal(kSpacing) : Vertical(kSpacing));
    }
}

void Layout::PlaceForm(const Box& box, RECT place) const {
    const int labels = WidthOfLabels(box);
    LONG top = place.top;
    for (std::size_t i = 0; i + 1 < box.parts.size(); i += 2) {
        const SIZE label = SizeOf(box.parts[i], true);
        const SIZE field = SizeOf(box.parts[i + 1], true);
        const LONG bottom = top + std::max(label.cy, field.cy);
        PlaceBox(box.parts[i], Middle({place.left, top, place.left + labels, bottom}, label.cy));
        PlaceBox(box.parts[i + 1],
                 Middle({place.left + labels + Horizontal(kSpacing), top, place.right, bottom}, field.cy));
        top = bottom + Vertical(kSpacing);
    }
}
