// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/InputFile.h"

#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/Interrupt.h"
#include "apps/chartutil/work/LongWork.h"

InputFile::InputFile(const UserText& path) : m_path(path) {
    if (IsStandardStream(path)) {
        StandardStreams::TakeInput();
        return;
    }
    m_file = std::make_unique<FILES::Reader>(path.Wide());
    if (!m_file->IsOpen()) ThrowNotReadable(path, m_file->Error());
}

std::size_t InputFile::Read(void* buffer, std::size_t count) {
    std::size_t got = 0;
    if (m_file)
        got = m_file->Read(buffer, count);
    else if (!ReadStandardInput(buffer, count, got))
        throw CommandError(ExitCode::IO_ERROR, "standard input cannot be read");
    if (m_file && m_file->Failed()) ThrowNotReadable(m_path, m_file->Error());
    StopIfInterrupted(); // before the end of the input is taken for the end of the file
    return got;
}

std::string ReadFile(const UserText& path, std::size_t most) {
    InputFile file(path);
    std::string bytes;
    char block[65536];
    while (const std::size_t got = file.Read(block, sizeof block)) {
        if (bytes.size() + got > most)
            throw CommandError(ExitCode::WRONG_USE, InputName(path) + ": is too large; give one of up to " +
                                                        std::to_string(most >> 20U) + " MB");
        bytes.append(block, got);
    }
    return bytes;
}
