// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/PlotErrorReporter.h"

#include "VelmBase/Utf16.h"

#include <algorithm>

namespace {

std::u16string Utf16Units(std::wstring_view text) {
    std::u16string units;
    units.reserve(Utf16Length(text));
    ForEachUtf16Unit(text, [&](char16_t unit) { units += unit; });
    return units;
}

} // namespace

// What both begin with is the same in every form. A character behind it above U+FFFF must not be compared in
// one piece.
bool PlotErrorReporter::UnitsLess::operator()(std::wstring_view a, std::wstring_view b) const {
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (inA == a.end() || inB == b.end()) return inB != b.end();
    const auto inOnePiece = [](char32_t c) { return c <= 0xFFFF; };
    const auto codeA = static_cast<char32_t>(*inA), codeB = static_cast<char32_t>(*inB);
    if (inOnePiece(codeA) && inOnePiece(codeB)) return codeA < codeB;
    return Utf16Units({inA, a.end()}) < Utf16Units({inB, b.end()});
}

PlotErrorReporter PlotErrorReporter::m_GlobalReporter;

PlotErrorReporter& PlotErrorReporter::Get() { return m_GlobalReporter; }

PlotErrorReporter::PlotErrorReporter() = default;
PlotErrorReporter::PlotErrorReporter(const PlotErrorReporter& other) = default;
PlotErrorReporter& PlotErrorReporter::operator=(const PlotErrorReporter& other) = default;
PlotErrorReporter::~PlotErrorReporter() = default;

std::vector<ErrorString>& PlotErrorReporter::operator[](const std::wstring& context) {
    return m_errors[context];
}

std::vector<std::wstring> PlotErrorReporter::GetContexts() const {
    std::vector<std::wstring> contexts;
    contexts.reserve(m_errors.size());
    for (const auto& [context, errors] : m_errors) contexts.push_back(context);
    return contexts;
}

bool PlotErrorReporter::NoErrors(const std::wstring& context) const { return !m_errors.contains(context); }

void PlotErrorReporter::Clear(const std::wstring& context) { m_errors.erase(context); }

void PlotErrorReporter::Clear() { m_errors.clear(); }
