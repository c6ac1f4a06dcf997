// Which records own an image. A record does not say of what kind it is, and hosts free bitmaps by
// their bare handles: so the library remembers.
#pragma once

namespace vm {

class Image;

/// The record takes over the caller's reference; null is nothing.
void GiveImage(const void* record, Image* image);
/// What the record owns; null for none and for a record that was freed.
Image* OwnedImage(const void* record);
/// Releases what the record owns, if anything.
void ReleaseImageOf(const void* record);

} // namespace vm
