#include "rc/writePicture.h"

#include <filesystem>

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtGui/QImageReader>

#include "rc/iconImage.h"

namespace vm::rc {
namespace {

constexpr qint64 kLargestFile = 64 * 1024 * 1024;

struct ReadResult {
    QImage image;
    std::string trouble;
    int count = 1;
};

ReadResult ReadImage(QByteArray& bytes) {
    if (IsIconFile(bytes))
        return {BestIconImage(bytes), "no image in it can be read", IconImageCount(bytes)};
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    ReadResult result;
    result.image = reader.read();
    if (result.image.isNull()) result.trouble = reader.errorString().toStdString();
    return result;
}

ReadResult ReadPicture(const std::string& path) {
    QFile file(QFile::decodeName(path.c_str()));
    if (file.size() > kLargestFile) return {{}, "the file is larger than 64 MB"};
    if (!file.open(QIODevice::ReadOnly)) return {{}, file.errorString().toStdString()};
    QByteArray bytes = file.readAll();
    return ReadImage(bytes);
}

std::string PngOf(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? bytes.toStdString() : std::string();
}

Notes NotesOf(const Picture& picture, const ReadResult& read) {
    Notes notes;
    if (!HasNumber(picture.head.id))
        notes.push_back("a picture with a name cannot be loaded by number");
    if (read.count > 1)
        notes.push_back("the largest of " + std::to_string(read.count) + " images, " +
                        std::to_string(read.image.width()) + " x " +
                        std::to_string(read.image.height()));
    return notes;
}

} // namespace

bool IsThere(const Picture& picture) {
    std::error_code error;
    return picture.isThere && !picture.path.empty() &&
           std::filesystem::is_regular_file(picture.path, error);
}

void WritePicture(const Picture& picture, bool isProgramIcon, Output& output) {
    const std::string what = Described(picture.head);
    const Place& place = picture.head.place;
    if (picture.kind == PictureKind::Cursor)
        return output.LeaveOut(place, what,
                               "cursors are the desktop's: see SetCursor" +
                                   UnlessThere(picture.isThere, picture.path));
    const std::string name = PictureFile(picture.head.id);
    if (output.Has(name))
        return output.LeaveOut(place, what,
                               name + " is there already, of an earlier bitmap or icon");
    if (!IsThere(picture)) return output.Miss(place, what, picture.path);
    const ReadResult read = ReadPicture(picture.path);
    const std::string png = read.image.isNull() ? std::string() : PngOf(read.image);
    if (png.empty())
        return output.LeaveOut(place, what,
                               "'" + picture.path + "' cannot be read: " + read.trouble);
    output.Add(name, png);
    const std::string where = isProgramIcon ? name + ", the program's icon" : name;
    output.Say(place, what, where, NotesOf(picture, read));
}

} // namespace vm::rc
