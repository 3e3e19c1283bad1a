#include "platform/foundation/LocalizedContains.h"

#include <QString>

namespace mirrolet::platform {
namespace {

/// Returns the text in Unicode's composed form, in which "é" is always one character. Text may also write "é"
/// as "e" and an accent.
QString composed(const std::string& text) {
    return QString::fromStdString(text).normalized(QString::NormalizationForm_C);
}

} // namespace

bool localizedCaseInsensitiveContains(const std::string& text, const std::string& part) {
    return composed(text).contains(composed(part), Qt::CaseInsensitive);
}

} // namespace mirrolet::platform
