// A report of the print dialog on the toolkit's devices.
#pragma once

#include "print/PrintDesk.h"

#include <QPageLayout>
#include <QPicture>
#include <QString>

#include <deque>
#include <string>

class QPagedPaintDevice;

namespace calder {

// Prints the whole job. False: the device could not be begun. One that fails later ends the job there.
bool PrintOn(QPagedPaintDevice& device, const PrintDesk& desk);

// The pages of the job as they would come out on paper of that layout, at kPreviewResolution.
inline constexpr double kPreviewResolution = 1200 / 25.4; // pixels a millimetre
[[nodiscard]] std::deque<QPicture> PreviewPages(const QPageLayout& layout, const PrintDesk& desk);

// The paper of the system's country, for a job that no printer is asked about.
[[nodiscard]] QPageLayout DefaultLayout();

// Writes the whole job as PDF. False: the file could not be written; an old one is unchanged.
[[nodiscard]] bool WritePdf(const std::string& path, const QPageLayout& layout, const QString& title,
                            const PrintDesk& desk);

} // namespace calder
