#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "UtilityDLL/res/private/StringTable.h"

#include <optional>
#include <string>
#include <vector>

/// What the contour editor decides, without a window: what its rows say, what is selected after a change, and
/// what saving would overwrite.
class UTILITYDLL_API ContourEditing {
public:
    using Contour = ContourDefinitionList::ContourDefInfo;

    /// Loads the file; with an empty path there is none. A file that is not there yet is no fault.
    explicit ContourEditing(std::wstring path);

    /// Whether the file is there and has no contours that can be read.
    bool IsUnreadable() const { return m_isUnreadable; }

    const std::wstring& Path() const { return m_path; }
    const ContourDefinitionList& List() const { return m_list; }
    ContourDefinitionList& List() { return m_list; }

    /// The columns of a contour's row, in their order.
    static std::vector<std::wstring> Row(const Contour& contour);

    /// Removes the contours at these positions, which ascend. Returns the one to select then: that in the
    /// first one's place, the last one if there is none; -1 in an empty list.
    int Remove(const std::vector<int>& positions);

    /// Where the list is saved: the path with the extension "cdf".
    std::wstring Target() const;

    /// Whether saving there would overwrite what was never loaded: another file than that of the path, or one
    /// that another program changed since.
    bool OverwritesOthers() const;

private:
    std::wstring m_path;
    ContourDefinitionList m_list;
    bool m_isUnreadable = false;
    unsigned int m_targetAtFirst = 0; // its fingerprint when the file was loaded; 0 while it is not there
};
