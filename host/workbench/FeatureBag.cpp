#include "host/workbench/FeatureBag.h"

namespace {

const char SERIAL_MARKER[] = "\r\n7d93cf56-39fb-424b-94d0-1d10f6057f2f\r\n";
const char FILE_MARKER[] = "\r\n34be7aa9-f6a1-4a50-9edf-8205286ad0c9\r\n";
constexpr int MARKER_LENGTH = 40;
static_assert(sizeof(SERIAL_MARKER) == MARKER_LENGTH + 1
                  && sizeof(FILE_MARKER) == MARKER_LENGTH + 1,
              "markers of a bag have 40 characters");
constexpr int MAX_SERIAL_LENGTH = 64;

} // namespace

bool FeatureBag::split(const QByteArray &bytes, QVector<Record> *records, QString *reason)
{
    records->clear();
    int position = 0;
    do {
        const int fileMarker = bytes.indexOf(FILE_MARKER, position);
        if (bytes.mid(position, MARKER_LENGTH) != SERIAL_MARKER || fileMarker < 0) {
            *reason = records->isEmpty()
                ? QStringLiteral("it is no bag of feature files")
                : QStringLiteral("record %1 is cut off").arg(records->size() + 1);
            return false;
        }
        const int serial = position + MARKER_LENGTH;
        const int file = fileMarker + MARKER_LENGTH;
        const int next = bytes.indexOf(SERIAL_MARKER, file);
        position = next < 0 ? bytes.size() : next;
        records->append({QString::fromUtf8(bytes.mid(serial, fileMarker - serial)),
                         bytes.mid(file, position - file)});
    } while (position < bytes.size());
    return true;
}

QStringList FeatureBag::fileNames(const QVector<Record> &records)
{
    QStringList names;
    for (const Record &record : records) {
        QString serial;
        for (const QChar c : record.serialNumber.left(MAX_SERIAL_LENGTH)) {
            const bool isKept = c.unicode() < 128
                && (c.isLetterOrNumber() || c == QLatin1Char('-') || c == QLatin1Char('_'));
            serial += isKept ? c : QLatin1Char('_');
        }
        names += QStringLiteral("%1_%2.vxf").arg(names.size() + 1).arg(serial);
    }
    return names;
}
