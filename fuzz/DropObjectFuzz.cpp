// SPDX-License-Identifier: MIT
// The one-line form of a drop: a text is an object or none, never half of one, and an object's own form reads
// back as the object. Two bytes of the input are a character.

#include "UtilityDLL/runtime/DropObject.h"
#include "fuzz/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    std::wstring text;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        text += static_cast<wchar_t>(bytes[i] | bytes[i + 1] << 8);
    }
    DropObject object(DropObject::KIND_1, L"before");
    object.FromString(text);
    const bool isObject = object.Type() >= 1 && object.Type() <= 3;
    Require(isObject || object.Type() == DropObject::NO_OBJECT);
    Require(isObject != object.Data().IsEmpty());
    if (isObject) {
        const std::wstring& data = object.Data().String();
        Require(text.ends_with(L"," + data) && text.find(L',') == text.size() - data.size() - 1);
    }

    DropObject again;
    again.FromString(object.ToString());
    Require(again.Type() == object.Type() && again.Data() == object.Data());
    return 0;
}
