#pragma once

namespace platform {

/// Opens /dev/null for each of standard input, output and error that the program was started without. Otherwise the
/// first file or socket that it opens would take the place, and what is printed would go there. Called first in main.
void occupyStandardDescriptors();

} // namespace platform
