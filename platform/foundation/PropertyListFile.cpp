#include "platform/foundation/PropertyListFile.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace mirrolet::platform {

namespace {

// The size limit in bytes. The files that the program writes are a thousand times smaller.
constexpr off_t largestFile = off_t{4} * 1024 * 1024;

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

QJsonValue toJson(const PropertyList& value);

QJsonObject toJson(const PropertyList::Dictionary& values) {
    QJsonObject object;
    for (const auto& [key, value] : values)
        object.insert(text(key), toJson(value));
    return object;
}

struct ToJson {
    QJsonValue operator()(std::monostate) const { return {}; }
    QJsonValue operator()(bool value) const { return value; }
    QJsonValue operator()(std::int64_t value) const { return qint64{value}; }
    QJsonValue operator()(double value) const { return value; }
    QJsonValue operator()(const std::string& value) const { return text(value); }
    QJsonValue operator()(const PropertyList::Array& values) const {
        QJsonArray array;
        for (const auto& value : values)
            array.append(toJson(value));
        return array;
    }
    QJsonValue operator()(const PropertyList::Dictionary& values) const { return toJson(values); }
};

QJsonValue toJson(const PropertyList& value) {
    return std::visit(ToJson{}, value.storage());
}

PropertyList fromJson(const QJsonValue& json);

PropertyList::Dictionary fromJson(const QJsonObject& object) {
    PropertyList::Dictionary values;
    for (auto entry = object.begin(); entry != object.end(); ++entry)
        values.emplace(entry.key().toStdString(), fromJson(QJsonValue(entry.value())));
    return values;
}

PropertyList::Array fromJson(const QJsonArray& array) {
    PropertyList::Array values;
    for (const auto& entry : array)
        values.push_back(fromJson(QJsonValue(entry)));
    return values;
}

PropertyList numberFromJson(const QJsonValue& json) {
    // QVariant distinguishes integers from doubles. QJsonValue reports both as doubles.
    const auto variant = json.toVariant();
    if (variant.typeId() == QMetaType::LongLong)
        return std::int64_t{variant.toLongLong()};
    return variant.toDouble();
}

PropertyList fromJson(const QJsonValue& json) {
    switch (json.type()) {
    case QJsonValue::Bool:
        return json.toBool();
    case QJsonValue::Double:
        return numberFromJson(json);
    case QJsonValue::String:
        return json.toString().toStdString();
    case QJsonValue::Array:
        return fromJson(json.toArray());
    case QJsonValue::Object:
        return fromJson(json.toObject());
    default:
        return {};
    }
}

class FileDescriptor {
  public:
    // O_NONBLOCK keeps open() from waiting for a writer of a FIFO. O_NOCTTY keeps a terminal from becoming
    // the controlling terminal.
    explicit FileDescriptor(const std::string& path)
        : number(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (number >= 0)
            close(number);
    }
    const int number;
};

PropertyListFile::Content broken(std::string problem) {
    return {.values = {}, .problem = std::move(problem)};
}

/// Reads the whole file. Returns none if reading fails, or if the file grows beyond the limit meanwhile.
std::optional<std::string> readAll(int file) {
    std::string bytes(static_cast<std::size_t>(largestFile) + 1, '\0');
    std::size_t length = 0;
    while (length < bytes.size()) {
        const auto count = ::read(file, bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    if (length > static_cast<std::size_t>(largestFile))
        return std::nullopt;
    bytes.resize(length);
    return bytes;
}

} // namespace

PropertyListFile::Content PropertyListFile::read(const std::string& path) {
    const FileDescriptor file(path);
    if (file.number < 0)
        return errno == ENOENT || errno == ENOTDIR ? Content{} : broken(std::strerror(errno));
    struct stat status {};
    if (fstat(file.number, &status) != 0 || !S_ISREG(status.st_mode))
        return broken("not a file");
    if (status.st_size > largestFile)
        return broken("too large");
    const auto bytes = readAll(file.number);
    if (!bytes)
        return broken("unreadable");
    auto values = parse(*bytes);
    return values ? Content{.values = std::move(*values), .problem = {}} : broken("not a JSON object");
}

std::optional<PropertyList::Dictionary> PropertyListFile::parse(std::string_view bytes) {
    const auto raw = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    const auto document = QJsonDocument::fromJson(raw);
    if (!document.isObject())
        return std::nullopt;
    return fromJson(document.object());
}

std::string PropertyListFile::write(const std::string& path, const PropertyList::Dictionary& values) {
    const auto bytes = QJsonDocument(toJson(values)).toJson();
    QDir().mkpath(QFileInfo(text(path)).absolutePath());
    QSaveFile file(text(path));
    // flush() fails if the disk is full. Without this call, commit() would not notice that and would replace
    // the old file by an empty one.
    const bool written = file.open(QIODevice::WriteOnly) &&
                         file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
                         file.write(bytes) == bytes.size() && file.flush() && file.commit();
    return written ? std::string() : file.errorString().toStdString();
}

} // namespace mirrolet::platform
