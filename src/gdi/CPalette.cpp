#include <vmcore/gdi/CPalette.h>

CPalette::CPalette() = default;
CPalette::~CPalette() = default;
