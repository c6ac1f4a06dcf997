// Fonts: the record a host fills in and the platform font made from its name and height.
#pragma once

#include <vmcore/gdi/CGdiObject.h>

class CDC;

/// The platform font is chosen by the face name alone: "Arial Bold" is bold, while weight and
/// italic of the record are only kept. What is not installed is replaced by a face of the same
/// metrics where one is known (Arial, Verdana, Times New Roman, Courier New and their relatives).
class VM_API CFont : public CGdiObject {
public:
    CFont();

    // The creating calls replace the record that was there. They return 0 when the system has
    // neither the face nor a stand-in for it, and before the application object exists; the record
    // is there even so, and a device context then looks the face up when it is selected.
    /// Height and width are taken without their sign; letters are drawn at 10,000 at most. A longer
    /// face name is cut to 31 bytes.
    BOOL CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                    BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision,
                    BYTE clipPrecision, BYTE quality, BYTE pitchAndFamily, const char* faceName);
    BOOL CreateFontIndirect(const tagLOGFONT* font);
    /// The height is a tenth of the number, in pixels; the device context does not count.
    BOOL CreatePointFont(int pointSizeTenths, const char* face, CDC* dc = nullptr);

    /// Makes the platform font of the record from the name ("Arial" when empty) and height in
    /// `font`.
    BOOL CreateNSFont(tagLOGFONT* font);
    /// Fills `font` and the own record from a platform font. FALSE for a null one.
    BOOL SetNSFont(tagLOGFONT* font, vm::FontFace* face);
    /// FALSE when there is no font.
    BOOL GetLogFont(tagLOGFONT* out);

    operator HFONT() const { return m_hObject; }
};
