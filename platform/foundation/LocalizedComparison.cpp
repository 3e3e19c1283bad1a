#include "platform/foundation/LocalizedComparison.h"

#include <QCollator>
#include <QLocale>
#include <QString>

namespace mirrolet::platform {

ComparisonResult localizedCaseInsensitiveCompare(const std::string& first, const std::string& second) {
    // One for each thread: making one is slow, and one may not be shared. The "C" locale, that of a user who
    // set none, would sort by code points; such a user, too, looks for "Älter" beside "alt".
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
