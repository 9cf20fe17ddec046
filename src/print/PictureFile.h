// The main window's picture as a file of its own: the drawing that is printed, without a page around it.
#pragma once

#include "print/PrintSettings.h"
#include "print/Reports.h"

#include <QString>

#include <string>

namespace calder {

// The kinds as a file dialog's filter; which one is written goes by the name's extension.
inline constexpr const char* kPictureFilter = "PDF(*.pdf)|*.pdf|SVG(*.svg)|*.svg|PNG(*.png)|*.png";
[[nodiscard]] bool IsPictureName(const std::string& path);

// Shapes where the format has them. False: the file could not be written; an old one is unchanged.
// REQUIRES: IsPictureName(path)
[[nodiscard]] bool WritePicture(const std::string& path, const QString& title, const WaveReport& report,
                                const PrintFont& font);

} // namespace calder
