// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/IniDocument.h"

#include "UtilityDLL/settings/detail/NamedSequence.h"
#include "UtilityDLL/settings/private/RecentTexts.h"
#include "VelmBase/File.h"
#include "VelmBase/SettingsText.h"

#include <algorithm>
#include <list>
#include <optional>
#include <utility>

namespace {

using SETTINGS::Bytes;
using SETTINGS::Line;
using SETTINGS::Widened;

// How many lines are asked for their spacing, so that an edit takes the same time in a file without keys.
constexpr int kFarthestLine = 1000;

// How many lines on either side are asked in which column their comments stand.
constexpr int kFarthestComment = 8;

bool IsBlank(const Line& line) { return line.kind == Line::BLANK; }

// A line that is for people alone. The format has no "#" lines: what reads the file takes them for keys.
bool IsRemark(const Line& line) {
    if (line.kind != Line::KEY) return false;
    return line.name.empty() ? !line.value.data() : line.name.front() == '#';
}

bool IsNamedKey(const Line& line) {
    return line.kind == Line::KEY && !line.name.empty() && line.name.front() != '#';
}

Bytes LineEndOf(Bytes text) {
    if (!text.ends_with('\n')) return {};
    return text.substr(text.size() - (text.ends_with("\r\n") ? 2 : 1));
}

Bytes WithoutLineEnd(Bytes text) { return text.substr(0, text.size() - LineEndOf(text).size()); }

std::size_t OffsetIn(Bytes whole, Bytes part) { return static_cast<std::size_t>(part.data() - whole.data()); }

std::size_t EndIn(Bytes whole, Bytes part) { return OffsetIn(whole, part) + part.size(); }

bool StartsWithBlank(Bytes text) { return text.starts_with(' ') || text.starts_with('\t'); }

// Of a text that a check found storable.
std::string Narrowed(std::wstring_view text) {
    std::string bytes(text.size(), '\0');
    std::transform(text.begin(), text.end(), bytes.begin(), [](wchar_t c) { return static_cast<char>(c); });
    return bytes;
}

// A line of a section.
struct Row {
    Bytes original; // as it was parsed, with its line end; none for a line that was added
    std::unique_ptr<const std::string> own; // what stands there instead

    Bytes Text() const { return own ? Bytes(*own) : original; }

    void Replace(std::size_t offset, std::size_t count, Bytes by) {
        auto text = std::make_unique<std::string>(Text());
        text->replace(offset, count, by);
        own = std::move(text);
    }
    void Insert(std::size_t offset, Bytes text) { Replace(offset, 0, text); }
};
using Rows = std::list<Row>;

// A line with a name, as look-ups find it.
struct KeyEntry {
    IndexedName m_name;
    Rows::iterator row;

    const HashedString<wchar_t>& GetName() const { return m_name.Get(); }
};

using Names = RecentTexts<HashedString<wchar_t>>;

struct Lines {
    Rows rows;
    NamedSequence<KeyEntry> keys;
    std::optional<Rows::iterator> lastKey; // behind which new keys go, once that is known

    void Index(Rows::iterator row, Names& names) {
        const Bytes name = SETTINGS::Parse(row->Text()).name;
        if (!name.empty()) keys.Append(KeyEntry{names.Get(name), row});
    }

    /// Null when there is none.
    KeyEntry* Find(const std::wstring& name) {
        const std::size_t position = keys.Find(name);
        return position < keys.Size() ? &keys[position] : nullptr;
    }
};

// A section from its header on to the next one, or what stands before the first.
struct Block {
    IndexedName m_name;
    Bytes original;               // as it was parsed; none for a section that was added
    std::unique_ptr<Lines> lines; // made when one of them is wanted

    const HashedString<wchar_t>& GetName() const { return m_name.Get(); }
};

// Each hands one line after the other over until `visit` wants no more.
template <typename Visit> void VisitLines(const Block& block, Visit visit) {
    if (block.lines) {
        for (const Row& row : block.lines->rows)
            if (!visit(row.Text())) return;
        return;
    }
    for (Bytes rest = block.original; !rest.empty();)
        if (!visit(SETTINGS::TakeLine(rest))) return;
}
template <typename Visit> void VisitLinesBackwards(const Block& block, Visit visit) {
    if (block.lines) {
        for (auto row = block.lines->rows.rbegin(); row != block.lines->rows.rend(); ++row)
            if (!visit(row->Text())) return;
        return;
    }
    for (Bytes rest = block.original; !rest.empty();) {
        const std::size_t feed = rest.size() == 1 ? Bytes::npos : rest.rfind('\n', rest.size() - 2);
        const std::size_t begin = feed == Bytes::npos ? 0 : feed + 1;
        if (!visit(rest.substr(begin))) return;
        rest = rest.substr(0, begin);
    }
}

// The line of a key with "=", and the blanks in it.
struct KeyLine {
    Bytes indentation, name, padding; // up to "="
    std::optional<Bytes> gap;         // behind "="; where there is no value, at most one blank counts

    std::size_t NameEnd() const { return indentation.size() + name.size(); }
    std::size_t Column() const { return NameEnd() + padding.size(); } // of "="
    bool HasTab() const { return padding.find('\t') != Bytes::npos; }
};

std::optional<KeyLine> DissectKey(Bytes text) {
    const Line line = SETTINGS::Parse(text);
    if (!IsNamedKey(line) || !line.value.data()) return {};
    const std::size_t nameEnd = EndIn(text, line.name);
    const std::size_t equals = text.find('=', nameEnd);
    KeyLine key{
        text.substr(0, OffsetIn(text, line.name)), line.name, text.substr(nameEnd, equals - nameEnd), {}};
    const Bytes behind = text.substr(equals + 1);
    if (!line.value.empty())
        key.gap = behind.substr(0, OffsetIn(behind, line.value));
    else if (StartsWithBlank(behind))
        key.gap = behind.substr(0, 1);
    return key;
}

// The blanks of a key's line, learned from the lines that it is shown, the nearest first. They are looked at
// until the text is edited.
class Spacing {
public:
    // False when it needs no more lines.
    bool LearnFrom(Bytes text) {
        if (--m_patience < 0) return false;
        const std::optional<KeyLine> key = DissectKey(text);
        if (!key) return true;
        if (m_keys.size() < kMostKeys) m_keys.push_back(*key);
        if (!m_gap) m_gap = key->gap;
        return m_keys.size() < kMostKeys || !m_gap;
    }

    bool IsKnown() const { return !m_keys.empty(); }

    // The lines are of another section, whose column is made for its own names.
    void ForgetColumn() {
        if (m_keys.empty()) return;
        m_keys.resize(1);
        if (!m_keys[0].HasTab()) m_keys[0].padding = m_keys[0].padding.substr(0, 1);
    }

    Bytes Indentation() const { return m_keys.empty() ? Bytes() : m_keys[0].indentation; }

    // What stands behind a name that ends in this column, up to the blanks of the value.
    std::string Equals(std::size_t nameEnd) const {
        const std::size_t column = Column();
        if (column == 0) return std::string(m_keys.empty() ? " " : m_keys[0].padding) + "=";
        const bool isTight =
            std::any_of(m_keys.begin(), m_keys.end(), [](const KeyLine& key) { return key.padding.empty(); });
        const bool fits = nameEnd + (isTight ? 0 : 1) <= column;
        return std::string(fits ? column - nameEnd : 1, ' ') + "=";
    }
    Bytes Gap() const { return m_gap.value_or(m_keys.empty() ? " " : ""); }

private:
    static constexpr std::size_t kMostKeys = 8;

    // Of "=", where it stands below each other; 0 where it does not. Names that are too long for the column
    // do not count.
    std::size_t Column() const {
        for (const KeyLine& key : m_keys) {
            if (IsColumn(key.Column())) return key.Column();
            if (m_keys[0].padding.size() > 1) return 0; // the nearest is in no other's column
        }
        return 0;
    }
    bool IsColumn(std::size_t column) const {
        const KeyLine* first = nullptr;
        bool isMeant = false; // the blanks are not what they would be without a column
        for (const KeyLine& key : m_keys) {
            const bool isTooLong = key.NameEnd() >= column;
            if (!key.HasTab() && key.Column() == column) {
                if (!first) first = &key;
                if (first->name.size() != key.name.size()) return true;
                isMeant = isMeant || key.padding.size() > 1;
            } else if (key.HasTab() || !isTooLong) {
                return false;
            }
        }
        return isMeant;
    }

    int m_patience = kFarthestLine;
    std::vector<KeyLine> m_keys;
    std::optional<Bytes> m_gap;
};

// The line at `place` does not end the file any more: gives it a line end if it has none.
Bytes EnsureLineEnd(Rows& rows, Rows::iterator place, Bytes otherwise) {
    if (const Bytes end = LineEndOf(place->Text()); !end.empty()) return end;
    const Bytes end = place == rows.begin() ? otherwise : LineEndOf(std::prev(place)->Text());
    place->Insert(place->Text().size(), end);
    return LineEndOf(place->Text());
}

// Puts a line behind another one and gives it the same line end; the end of a file stays as it is.
Rows::iterator InsertBehind(Rows& rows, Rows::iterator place, std::string text, Bytes otherwise) {
    const bool endedLine = !LineEndOf(place->Text()).empty();
    const Bytes end = EnsureLineEnd(rows, place, otherwise);
    if (endedLine) text += end;
    return rows.insert(std::next(place), Row{{}, std::make_unique<const std::string>(std::move(text))});
}

// The column in which comments stand near this line.
std::optional<std::size_t> CommentColumn(const Rows& rows, Rows::const_iterator row) {
    std::vector<std::size_t> columns;
    const auto look = [&](const Row& other) {
        const Bytes text = other.Text();
        const Line line = SETTINGS::Parse(text);
        if (!IsNamedKey(line) || !line.comment.data()) return;
        const std::size_t column = OffsetIn(text, line.comment) - 1;
        if (text.substr(0, column).find('\t') == Bytes::npos) columns.push_back(column);
    };
    auto before = row;
    for (int i = 0; i < kFarthestComment && before != rows.begin(); ++i) look(*--before);
    auto after = row;
    for (int i = 0; i < kFarthestComment && ++after != rows.end(); ++i) look(*after);
    for (const std::size_t column : columns)
        if (std::count(columns.begin(), columns.end(), column) > 1) return column;
    return {};
}

// Puts the runs of changed lines together from what stands in the document, in its order.
class ChangeList {
public:
    ChangeList(Bytes content, std::size_t start) : m_content(content), m_position(start) {
        CountLines(content.substr(0, start));
    }

    // These bytes of the content are there still.
    void Keep(Bytes original) {
        RemoveUpTo(OffsetIn(m_content, original));
        Flush();
        m_position += original.size();
        CountLines(original);
        if (!original.ends_with('\n')) ++m_line;
    }

    void Put(const Row& row) {
        const Bytes text = row.Text();
        if (!row.original.empty()) {
            if (WithoutLineEnd(text) == WithoutLineEnd(row.original)) return Keep(row.original);
            RemoveUpTo(EndIn(m_content, row.original));
        }
        m_after.push_back(text);
    }

    std::vector<IniDocument::Change> Finish() {
        RemoveUpTo(m_content.size());
        Flush();
        return std::move(m_changes);
    }

private:
    void RemoveUpTo(std::size_t end) {
        Bytes rest = m_content.substr(m_position, end - m_position);
        while (!rest.empty()) m_before.push_back(SETTINGS::TakeLine(rest));
        m_position = end;
    }

    // What was removed and came again as it had been is no change.
    void Flush() {
        const auto numSame = [](auto a, auto aEnd, auto b, auto bEnd) {
            return std::mismatch(a, aEnd, b, bEnd).first - a;
        };
        const auto first = numSame(m_before.begin(), m_before.end(), m_after.begin(), m_after.end());
        const auto last =
            numSame(m_before.rbegin(), m_before.rend() - first, m_after.rbegin(), m_after.rend() - first);
        const auto changed = [&](const std::vector<Bytes>& lines) {
            std::vector<std::string> texts;
            for (auto line = lines.begin() + first; line != lines.end() - last; ++line)
                texts.emplace_back(WithoutLineEnd(*line));
            return texts;
        };
        IniDocument::Change change{m_line + static_cast<std::uint32_t>(first), changed(m_before),
                                   changed(m_after)};
        m_line += static_cast<std::uint32_t>(m_before.size());
        m_before.clear();
        m_after.clear();
        if (!change.before.empty() || !change.after.empty()) m_changes.push_back(std::move(change));
    }

    void CountLines(Bytes lines) {
        m_line += static_cast<std::uint32_t>(std::count(lines.begin(), lines.end(), '\n'));
    }

    Bytes m_content;
    std::size_t m_position;               // up to where the content is accounted for
    std::uint32_t m_line = 1;             // of the first line behind the runs that are done
    std::vector<Bytes> m_before, m_after; // of the run under way
    std::vector<IniDocument::Change> m_changes;
};

SectionKey KeyOf(const Line& line) {
    return {HashedString<wchar_t>(Widened(line.name)), Widened(line.value), Widened(line.comment)};
}

ErrorString NoSection(const std::wstring& section) {
    return ErrorString(L"there is no section [") << section << L"]";
}

ErrorString NoKey(const std::wstring& section, const std::wstring& key) {
    return ErrorString(L"there is no key \"") << key << L"\" in [" << section << L"]";
}

} // namespace

struct IniDocument::Data {
    std::string content; // as it was parsed; the blocks point into it
    std::size_t start = 0;
    Names names;
    Block front; // before the first section
    NamedSequence<Block> sections;
    std::size_t countedBytes = 0; // up to the begin of line number `countedLine`
    std::uint32_t countedLine = 1;

    Lines& Open(Block& block) {
        if (block.lines) return *block.lines;
        block.lines = std::make_unique<Lines>();
        Rows& rows = block.lines->rows;
        for (Bytes rest = block.original; !rest.empty();) {
            rows.push_back({SETTINGS::TakeLine(rest), nullptr});
            const bool isOfKey = &block != &front && rows.size() > 1;
            if (isOfKey) block.lines->Index(std::prev(rows.end()), names);
        }
        return *block.lines;
    }

    Block* Find(const std::wstring& section) {
        const std::size_t position = sections.Find(section);
        return position < sections.Size() ? &sections[position] : nullptr;
    }

    std::uint32_t LineAt(Bytes original) {
        if (original.empty()) return 0;
        const std::size_t offset = OffsetIn(content, original);
        if (offset < countedBytes) {
            countedBytes = 0;
            countedLine = 1;
        }
        const Bytes between = Bytes(content).substr(countedBytes, offset - countedBytes);
        countedLine += static_cast<std::uint32_t>(std::count(between.begin(), between.end(), '\n'));
        countedBytes = offset;
        return countedLine;
    }

    bool Parse(IniFile::Fault& fault);
    Bytes UsualLineEnd() const;
    Spacing SpacingAt(std::size_t section, Rows::const_iterator row) const;
    void AddSection(const std::wstring& name);
    void AddKey(std::size_t section, const std::wstring& key, Bytes value);
    void SetValue(std::size_t section, Rows::iterator row, Bytes value) const;
    void KeepBanner(std::size_t section);
};

bool IniDocument::Data::Parse(IniFile::Fault& fault) {
    std::size_t blockBegin = start;
    Block* block = &front;
    SETTINGS::FoundHeader header;
    for (std::size_t position = start; SETTINGS::FindHeader(content, position, header);
         position = header.end) {
        block->original = Bytes(content).substr(blockBegin, header.begin - blockBegin);
        blockBegin = header.begin;
        std::wstring name = Widened(header.line.name);
        const Bytes line = Bytes(content).substr(header.begin);
        if (header.line.kind == Line::BAD_HEADER) {
            fault.kind = IniFile::Fault::NAMELESS_SECTION;
            fault.line = LineAt(line);
            return false;
        }
        if (const Block* const first = Find(name)) {
            fault.kind = IniFile::Fault::DUPLICATE_SECTION;
            fault.firstLine = LineAt(first->original);
            fault.line = LineAt(line);
            fault.section = std::move(name);
            return false;
        }
        block = &sections.Append(Block{HashedString<wchar_t>(std::move(name)), line, nullptr});
    }
    block->original = Bytes(content).substr(blockBegin);
    return true;
}

// That of the first line.
Bytes IniDocument::Data::UsualLineEnd() const {
    Bytes end;
    const auto look = [&](Bytes text) {
        end = LineEndOf(text);
        return false;
    };
    VisitLines(front, look);
    if (end.empty() && sections.Size() > 0) VisitLines(sections[0], look);
    return end.empty() ? "\r\n" : end;
}

// Of the lines up to `row` in that section, or else behind it; where it has none, of other sections.
Spacing IniDocument::Data::SpacingAt(std::size_t section, Rows::const_iterator row) const {
    Spacing spacing;
    const auto learn = [&](Bytes text) { return spacing.LearnFrom(text); };
    const Rows& rows = sections[section].lines->rows;
    for (auto other = row; learn(other->Text()) && other != rows.begin();) --other;
    if (spacing.IsKnown()) return spacing;
    for (auto other = std::next(row); other != rows.end() && learn(other->Text());) ++other;
    if (spacing.IsKnown()) return spacing;
    for (std::size_t i = section; i-- > 0 && !spacing.IsKnown();) VisitLinesBackwards(sections[i], learn);
    if (!spacing.IsKnown()) VisitLinesBackwards(front, learn);
    for (std::size_t i = section + 1; i < sections.Size() && !spacing.IsKnown(); ++i)
        VisitLines(sections[i], learn);
    spacing.ForgetColumn();
    return spacing;
}

void IniDocument::Data::AddSection(const std::wstring& name) {
    Rows& rows = Open(sections.Size() > 0 ? sections[sections.Size() - 1] : front).rows;
    std::string end(UsualLineEnd());
    bool endsFile = true; // with a line end
    if (!rows.empty()) {
        const auto last = std::prev(rows.end());
        endsFile = !LineEndOf(last->Text()).empty();
        end = EnsureLineEnd(rows, last, end);
        if (!IsBlank(SETTINGS::Parse(last->Text())))
            rows.push_back({{}, std::make_unique<const std::string>(end)});
    }
    const std::string header = "[" + Narrowed(name) + "]" + (endsFile ? end : "");
    Block& block = sections.Append(Block{HashedString<wchar_t>(name), {}, std::make_unique<Lines>()});
    block.lines->rows.push_back({{}, std::make_unique<const std::string>(header)});
}

void IniDocument::Data::AddKey(std::size_t section, const std::wstring& key, Bytes value) {
    Lines& lines = Open(sections[section]);
    if (!lines.lastKey) {
        const auto lastNamed = std::find_if(lines.rows.rbegin(), lines.rows.rend(), [](const Row& row) {
            return IsNamedKey(SETTINGS::Parse(row.Text()));
        });
        if (lastNamed != lines.rows.rend()) lines.lastKey = std::prev(lastNamed.base());
    }
    const auto isRemark = [](const Row& row) { return IsRemark(SETTINGS::Parse(row.Text())); };
    const auto place =
        lines.lastKey
            ? *lines.lastKey
            : std::prev(std::find_if_not(std::next(lines.rows.begin()), lines.rows.end(), isRemark));
    const Spacing spacing = SpacingAt(section, place);
    const std::string name = Narrowed(key);
    std::string text = std::string(spacing.Indentation()) + name;
    text += spacing.Equals(text.size());
    if (!value.empty()) (text += spacing.Gap()) += value;
    const auto row = InsertBehind(lines.rows, place, std::move(text), UsualLineEnd());
    lines.keys.Append(KeyEntry{HashedString<wchar_t>(key), row});
    if (IsNamedKey(SETTINGS::Parse(row->Text()))) lines.lastKey = row;
}

void IniDocument::Data::SetValue(std::size_t section, Rows::iterator row, Bytes value) const {
    const Bytes text = row->Text();
    const Line line = SETTINGS::Parse(text);
    if (line.value == value) return;
    if (!line.value.empty()) return row->Replace(OffsetIn(text, line.value), line.value.size(), value);
    const bool hasEquals = line.value.data();
    const std::size_t nameEnd = EndIn(text, line.name);
    const std::size_t behind = hasEquals ? text.find('=', nameEnd) + 1 : nameEnd;
    if (hasEquals && StartsWithBlank(text.substr(behind))) return row->Insert(behind + 1, value);
    const Spacing spacing = SpacingAt(section, row);
    std::string inserted = hasEquals ? std::string() : spacing.Equals(nameEnd);
    (inserted += spacing.Gap()) += value;
    row->Insert(behind, inserted);
}

// Hands the comment that is meant for the section behind this one over to the one before.
void IniDocument::Data::KeepBanner(std::size_t section) {
    if (section + 1 == sections.Size()) return;
    Rows& rows = Open(sections[section]).rows;
    const auto is = [](bool (&kind)(const Line&), const Row& row) {
        return kind(SETTINGS::Parse(row.Text()));
    };
    auto banner = rows.end();
    while (is(IsRemark, *std::prev(banner))) --banner;
    auto blanks = banner;
    while (is(IsBlank, *std::prev(blanks))) --blanks;
    if (banner == rows.end() || blanks == banner) return;

    Lines& before = Open(section > 0 ? sections[section - 1] : front);
    const bool isSetOff = before.rows.empty() || is(IsBlank, before.rows.back());
    const auto isKeyToReaders = [](const Row& row) { return !SETTINGS::Parse(row.Text()).name.empty(); };
    const bool wouldBreakSeal = section > 0 && before.Find(Section::m_ChecksumName) &&
                                std::any_of(banner, rows.end(), isKeyToReaders);
    if (wouldBreakSeal) return;
    const auto first = isSetOff ? banner : blanks;
    before.rows.splice(before.rows.end(), rows, first, rows.end());
    if (section == 0) return; // nothing is found there
    for (auto row = first; row != before.rows.end(); ++row) before.Index(row, names);
}

IniDocument::IniDocument() : m_data(std::make_unique<Data>()) {}
IniDocument::~IniDocument() = default;
IniDocument::IniDocument(IniDocument&& other) noexcept = default;
IniDocument& IniDocument::operator=(IniDocument&& other) noexcept = default;

bool IniDocument::Parse(std::string content, IniFile::Fault& fault, std::size_t start) {
    fault = {};
    m_data = std::make_unique<Data>();
    m_data->start = std::min(start, content.size());
    m_data->content = std::move(content);
    if (m_data->Parse(fault)) return true;
    m_data = std::make_unique<Data>();
    return false;
}

std::string IniDocument::Text() const {
    std::string text;
    text.reserve(m_data->content.size() + m_data->content.size() / 16);
    text.append(m_data->content, 0, m_data->start);
    const auto append = [&](const Block& block) {
        if (!block.lines) {
            text += block.original;
            return;
        }
        for (const Row& row : block.lines->rows) text += row.Text();
    };
    append(m_data->front);
    for (const Block& block : m_data->sections) append(block);
    return text;
}

std::vector<std::wstring> IniDocument::SectionNames() const {
    std::vector<std::wstring> names;
    names.reserve(m_data->sections.Size());
    for (const Block& block : m_data->sections) names.push_back(block.GetName());
    return names;
}

bool IniDocument::HasSection(const std::wstring& section) const { return m_data->Find(section) != nullptr; }

Section IniDocument::Read(const std::wstring& name) const {
    const Block* const block = m_data->Find(name);
    if (!block) return {};
    Section section(block->GetName());
    VisitLines(*block, [&](Bytes text) {
        const Line line = SETTINGS::Parse(text);
        if (line.kind == Line::KEY) section.AddKey(KeyOf(line));
        return true;
    });
    return section;
}

std::vector<SectionKey> IniDocument::Read(const std::wstring& section, const std::wstring& key) const {
    std::vector<SectionKey> found;
    const Block* const block = m_data->Find(section);
    if (!block) return found;
    VisitLines(*block, [&](Bytes text) {
        const Line line = SETTINGS::Parse(text);
        if (line.kind == Line::KEY && line.name.size() == key.size() && icompareW(Widened(line.name), key))
            found.push_back(KeyOf(line));
        return true;
    });
    return found;
}

std::uint32_t IniDocument::LineOf(const std::wstring& section) const {
    const Block* const block = m_data->Find(section);
    return block ? m_data->LineAt(block->original) : 0;
}

std::uint32_t IniDocument::LineOf(const std::wstring& section, const std::wstring& key) const {
    Block* const block = m_data->Find(section);
    const KeyEntry* const entry = block ? m_data->Open(*block).Find(key) : nullptr;
    return entry ? m_data->LineAt(entry->row->original) : 0;
}

ErrorString IniDocument::AddSection(const std::wstring& section) {
    if (HasSection(section)) return {};
    if (ErrorString error = SETTINGS::CheckSectionName(section); !error) return error;
    m_data->AddSection(section);
    return {};
}

ErrorString IniDocument::Set(const std::wstring& section, const std::wstring& key,
                             const std::wstring& value) {
    Block* const block = m_data->Find(section);
    KeyEntry* const entry = block ? m_data->Open(*block).Find(key) : nullptr;
    const std::wstring comment =
        entry ? Widened(SETTINGS::Parse(entry->row->Text()).comment) : std::wstring();
    if (ErrorString error = SETTINGS::CheckKeyLine(key, value, comment); !error) return error;
    if (ErrorString error = AddSection(section); !error) return error;
    const std::size_t position = m_data->sections.Find(section);
    if (entry)
        m_data->SetValue(position, entry->row, Narrowed(value));
    else
        m_data->AddKey(position, key, Narrowed(value));
    return {};
}

ErrorString IniDocument::SetComment(const std::wstring& section, const std::wstring& key,
                                    const std::wstring& comment) {
    Block* const block = m_data->Find(section);
    if (!block) return NoSection(section);
    const KeyEntry* const entry = m_data->Open(*block).Find(key);
    if (!entry) return NoKey(section, key);
    Row& row = *entry->row;
    const Bytes text = row.Text();
    const Line line = SETTINGS::Parse(text);
    if (ErrorString error = SETTINGS::CheckKeyLine(Widened(line.name), Widened(line.value), comment); !error)
        return error;
    const std::string bytes = Narrowed(comment);
    const std::size_t end = EndIn(text, SETTINGS::Trimmed(text));
    if (!line.comment.data()) {
        if (comment.empty()) return {};
        const std::size_t column = CommentColumn(block->lines->rows, entry->row).value_or(0);
        row.Insert(end, std::string(column > end ? column - end : 1, ' ') + ";" + bytes);
    } else if (comment.empty()) {
        const std::size_t semicolon = OffsetIn(text, line.comment) - 1;
        const std::size_t first = EndIn(text, SETTINGS::Trimmed(text.substr(0, semicolon)));
        row.Replace(first, end - first, {});
    } else if (line.comment != bytes) {
        row.Replace(OffsetIn(text, line.comment), line.comment.size(), bytes);
    }
    return {};
}

bool IniDocument::Remove(const std::wstring& section) {
    const std::size_t position = m_data->sections.Find(section);
    if (position == m_data->sections.Size()) return false;
    m_data->KeepBanner(position);
    m_data->sections.Remove(position);
    return true;
}

bool IniDocument::Remove(const std::wstring& section, const std::wstring& key) {
    Block* const block = m_data->Find(section);
    if (!block) return false;
    Lines& lines = m_data->Open(*block);
    const std::size_t position = lines.keys.Find(key);
    if (position == lines.keys.Size()) return false;
    const Rows::iterator row = lines.keys[position].row;
    if (lines.lastKey == row) lines.lastKey.reset();
    lines.keys.Remove(position);
    lines.rows.erase(row);
    return true;
}

ErrorString IniDocument::Rename(const std::wstring& section, const std::wstring& newName) {
    Block* const block = m_data->Find(section);
    if (!block) return NoSection(section);
    if (ErrorString error = SETTINGS::CheckSectionName(newName); !error) return error;
    if (HasSection(newName)) return ErrorString(L"there is a section [") << newName << L"] already";
    Row& header = m_data->Open(*block).rows.front();
    const Bytes text = header.Text();
    const Bytes name = SETTINGS::Parse(text).name;
    header.Replace(OffsetIn(text, name), name.size(), Narrowed(newName));
    block->m_name.Set(newName);
    return {};
}

ErrorString IniDocument::Rename(const std::wstring& section, const std::wstring& key,
                                const std::wstring& newName) {
    Block* const block = m_data->Find(section);
    if (!block) return NoSection(section);
    Lines& lines = m_data->Open(*block);
    KeyEntry* const entry = lines.Find(key);
    if (!entry) return NoKey(section, key);
    const Bytes text = entry->row->Text();
    const Line line = SETTINGS::Parse(text);
    if (newName.empty()) return L"the key name is empty";
    if (ErrorString error = SETTINGS::CheckKeyLine(newName, Widened(line.value), Widened(line.comment));
        !error)
        return error;
    if (lines.Find(newName))
        return ErrorString(L"there is a key \"") << newName << L"\" in [" << section << L"] already";
    entry->row->Replace(OffsetIn(text, line.name), line.name.size(), Narrowed(newName));
    entry->m_name.Set(newName);
    lines.lastKey.reset();
    return {};
}

bool IniDocument::Seal(const std::wstring& section) {
    if (!HasSection(section)) return false;
    const unsigned int checksum = Read(section).ComputeChecksum();
    return Set(section, Section::m_ChecksumName, std::to_wstring(checksum));
}

std::vector<IniDocument::Change> IniDocument::Changes() const {
    ChangeList changes(m_data->content, m_data->start);
    const auto add = [&](const Block& block) {
        if (!block.lines) {
            if (!block.original.empty()) changes.Keep(block.original);
            return;
        }
        for (const Row& row : block.lines->rows) changes.Put(row);
    };
    add(m_data->front);
    for (const Block& block : m_data->sections) add(block);
    return changes.Finish();
}

std::error_code IniDocument::Update(const std::wstring& path,
                                    const std::function<bool(IniDocument& document, bool exists)>& edit,
                                    IniFile::Fault& fault) {
    fault = {};
    const std::error_code error = FILES::UpdateContents(path, [&](std::string& content, bool exists) {
        IniDocument document;
        if (!document.Parse(std::move(content), fault) || !edit(document, exists)) return false;
        content = document.Text();
        return true;
    });
    return error || fault.kind == IniFile::Fault::NONE ? error : std::make_error_code(std::errc::bad_message);
}
