// How large what the program paints and places itself is beside the texts of native controls.
#pragma once

#include <afxwin.h>

/// The height of the desktop's font in pixels. Tell it before the first use of the others.
void SetDesktopFont(int height);

/// `pixels`, which are meant for a font of 14, in quarter steps of more: never fewer.
int Scaled(int pixels);

/// Selects the font, which is made first when it is new.
void SelectScaledFont(CDC& dc, CFont& font, int height, const char* face);
