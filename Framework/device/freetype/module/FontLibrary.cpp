// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/module/private/FontLibrary.h"

#include <charconv>
#include <freetype/ftmm.h>
#include <mutex>
#include <vector>

namespace {

// Opening and closing change what all faces share.
struct Library {
    FT_Library handle = nullptr;
    std::mutex guard;

    static Library& Get() {
        static auto& library = *[] {
            auto* const made = new Library; // never destroyed: faces may live until the process ends
            FT_Init_FreeType(&made->handle);
            return made;
        }();
        return library;
    }
};

void Close(FT_Face face) {
    const std::lock_guard lock(Library::Get().guard);
    FT_Done_Face(face);
}

// "wght=700,wdth=75": what is not named stays at its default.
void SetVariations(FT_Face face, std::string_view variations) {
    FT_MM_Var* axes = nullptr;
    if (FT_Get_MM_Var(face, &axes) != 0) return;
    std::vector<FT_Fixed> coordinates;
    for (FT_UInt i = 0; i < axes->num_axis; ++i) {
        const FT_ULong tag = axes->axis[i].tag;
        const char name[] = {static_cast<char>(tag >> 24 & 0xFF), static_cast<char>(tag >> 16 & 0xFF),
                             static_cast<char>(tag >> 8 & 0xFF), static_cast<char>(tag & 0xFF), '='};
        FT_Fixed value = axes->axis[i].def;
        const std::size_t at = variations.find({name, sizeof name});
        double number = 0;
        if (at != std::string_view::npos &&
            std::from_chars(variations.data() + at + sizeof name, variations.data() + variations.size(),
                            number)
                    .ec == std::errc() &&
            number > -32768 && number < 32767)
            value = static_cast<FT_Fixed>(number * 65536);
        coordinates.push_back(value);
    }
    FT_Set_Var_Design_Coordinates(face, axes->num_axis, coordinates.data());
    FT_Done_MM_Var(Library::Get().handle, axes);
}

} // namespace

FreeTypeFace OpenFreeTypeFace(std::string_view bytes, const FaceFile& file) {
    FreeTypeFace face(nullptr, &Close);
    Library& library = Library::Get();
    if (!library.handle) return face;
    {
        const std::lock_guard lock(library.guard);
        FT_Face opened = nullptr;
        if (FT_New_Memory_Face(library.handle, reinterpret_cast<const FT_Byte*>(bytes.data()),
                               static_cast<FT_Long>(bytes.size()), file.index, &opened) != 0)
            return face;
        if (!file.variations.empty()) SetVariations(opened, file.variations);
        face.reset(opened);
    }
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) face.reset();
    return face;
}
