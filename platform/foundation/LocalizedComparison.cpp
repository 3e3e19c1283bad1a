#include "platform/foundation/LocalizedComparison.h"

#include <QCollator>
#include <QLocale>
#include <QString>

namespace mirrolet::platform {

ComparisonResult localizedCaseInsensitiveCompare(const std::string& first, const std::string& second) {
    // Each thread has its own collator, because making one is slow and threads may not share one. If the user
    // has set no language, English is used. Qt would use the "C" locale, which sorts by code points and does
    // not put "Älter" beside "alt".
    thread_local const QCollator collator = [] {
        QCollator made(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    const int order = collator.compare(QString::fromStdString(first), QString::fromStdString(second));
    if (order == 0)
        return ComparisonResult::orderedSame;
    return order < 0 ? ComparisonResult::orderedAscending : ComparisonResult::orderedDescending;
}

} // namespace mirrolet::platform
