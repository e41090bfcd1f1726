// Makes the fonts of fonts/fonts.conf.in the only ones of a test program, however it is started.
#include <cstdlib>

namespace {

[[maybe_unused]] const int pinned = setenv("FONTCONFIG_FILE", AK_FONTS_CONF, 1);

}  // namespace
