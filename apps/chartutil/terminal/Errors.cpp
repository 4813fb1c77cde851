#include "apps/chartutil/terminal/Errors.h"

void ThrowNotWritten(const std::string& path, const std::error_code& /*reason*/) {
    throw CommandError(ExitCode::IO_ERROR,
                       path +
                           ": cannot be written, a file there is as it was; check that the folder exists and "
                           "takes new files, the permissions of the file and the space on the disk");
}
