#pragma once

#include <QtGui/QPixmap>
#include <string>

#include "data/value/Value.h"
#include "toolkit/forms/ProgressBox.h"

namespace tavoline {

/// Makes a picture from stored bytes (PNG, JPEG, BMP), decoding each content once per process; null if it
/// cannot. The least recently wanted pictures are let go beyond some 64 MB.
QPixmap decodedPicture(const SharedBytes& bytes);

/// The longer edge of a picture in the store, in pixels: enough for any tile, and small on the way to it.
constexpr int storedPictureEdge = 512;

/// Reads a picture file (PNG, JPEG, BMP) as bytes for the store, made smaller when it is larger than that.
/// Throws Error with a sentence that names the file if it cannot be read or is no whole picture; null where
/// `progress` gave it up.
SharedBytes pictureFromFile(const std::string& path, const Progress& progress = {});

}  // namespace tavoline
