// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "UtilityDLL/res/private/StringTable.h"

#include <optional>
#include <string>
#include <vector>

/// What the contour editor decides, without a window: what its rows and messages say, what is selected after
/// a change, when a button can be pressed, and what OK asks and does.
class UTILITYDLL_API ContourEditing {
public:
    using Contour = ContourDefinitionList::ContourDefInfo;

    /// Loads the file; with an empty path there is none. A file that is not there yet is no fault.
    explicit ContourEditing(std::wstring path);

    const std::wstring& Path() const { return m_path; }
    const ContourDefinitionList& List() const { return m_list; }

    /// What to say about a file that is there and has no contours that can be read; empty otherwise.
    std::wstring OpeningFault() const;

    /// The columns of a contour's row, in their order.
    static std::vector<std::wstring> Row(const Contour& contour);

    /// The position of a contour with that level, in a list that is not sorted as well; -1 if there is none.
    /// Of equal levels, which a file may have, that of the one that was edited last.
    int PositionOf(double level) const;

    // The selected rows ascend.

    /// Whether "Remove" and "Edit" can be pressed.
    static bool CanChange(const std::vector<int>& selected) { return !selected.empty(); }

    /// The row that "Edit" is for: the first one. -1 if there is none.
    static int RowToEdit(const std::vector<int>& selected);

    /// Rows that follow each other.
    struct Run {
        int first;
        int count;
        bool operator==(const Run&) const = default;
    };

    /// The selected rows in as few runs as there are, from the last to the first: in this order they can be
    /// removed one after the other, and half of a long list goes as quickly as one row.
    static std::vector<Run> RunsFromTheLast(const std::vector<int>& selected);

    // Changes of the list. What is returned is to be said to the user: that, and why, it failed.

    using Failure = std::optional<TextId>;

    /// Fails when the level is taken; nothing is added then.
    Failure Add(const Contour& contour);

    /// Replaces the contour at `position`, which there must be. Fails when another one has that level
    /// already; the contour is gone then.
    Failure Edit(int position, const Contour& contour);

    /// Replaces the list by the levels of a range, and empties it when that fails.
    Failure GenerateFromRange(double lowest, double highest, double interval);

    /// Replaces the list by the entries of that file. A file that cannot be read leaves it as it is; a table
    /// without entries empties it.
    Failure GenerateFromColorTable(const std::wstring& path);

    /// Removes the contours of the selected rows. Returns the row to select then: that in the first one's
    /// place, the last one if there is none; -1 in an empty list.
    int Remove(const std::vector<int>& selected);

    /// What to ask before OK saves; with any answer but yes it does nothing. Without a path, whether to save
    /// at all; with one, whether to replace a file that is there and that is not what was read here: another
    /// one than was opened, one that could not be read or has more than the list, or one that another program
    /// changed since. Empty when there is nothing to ask.
    std::wstring Question() const;

    /// Where OK saves: the path with the extension "cdf". Empty without a path: the user says where.
    std::wstring Target() const;

    /// Saves there. Returns what to say when nothing was saved, also because `path` is empty; empty when all
    /// is well.
    [[nodiscard]] std::wstring Save(const std::wstring& path);

private:
    bool WouldLoseAFile() const;

    std::wstring m_path;
    ContourDefinitionList m_list;
    int m_lastEdited = -1; // where it stood; others may be there by now, or none
    bool m_isUnreadable = false;
    std::optional<unsigned int>
        m_known; // the target's fingerprint when it last had what the list has, and no more
};
