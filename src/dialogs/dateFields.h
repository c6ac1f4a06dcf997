// What interface files say of dates and times beyond the toolkit's own properties.
#pragma once

class QDateTimeEdit;
class QString;

namespace vm {

/// The property `startsNow`: the field shows the time at which the dialog is loaded, as date pickers do.
inline constexpr char kStartsNowProperty[] = "startsNow";
/// Of the user's locale: "century" (a short date with a year of four digits), "long", or "seconds", a time.
inline constexpr char kDateFormatProperty[] = "dateFormat";

/// Does what the properties say; false for an unknown format.
bool SetUpDateField(QDateTimeEdit& field);

} // namespace vm
