#include "editors/VexaStringFormatTags.h"

#include <QCoreApplication>
#include <QHash>

namespace {

constexpr char CONTEXT[] = "VexaStringFormatWidget";

struct TagRow
{
    const char *english; ///< source text of the translation
    const char *chinese;
};

#define TAG(english, chinese)                                                                      \
    {                                                                                              \
        QT_TRANSLATE_NOOP("VexaStringFormatWidget", english), chinese                              \
    }
const TagRow TAGS[] = {
    TAG("Code Content", "条码内容"),
    TAG("Code Type", "条码类型"),
    TAG("Angle", "角度"),
    TAG("Code Vertex Coordinate", "条码顶点坐标"),
    TAG("Code Central Coordinate", "条码中心坐标"),
    TAG("Angle of L Shaped Side", "L边角度"),
    TAG("Angle of DMcode L Shaped Side", "DM码 L边角度"),
    TAG("Trigger Start Time", "触发开始时间"),
    TAG("Code Score", "读码评分"),
    TAG("Mirror Mark", "镜像标记"),
    TAG("Code Quality Evaluation", "打码评级"),
    TAG("Trigger No.", "触发号"),
    TAG("Frame No.", "帧号"),
    TAG("Polling Parameter", "轮询参数信号"),
    TAG("ROI No.", "ROI号"),
    TAG("Carriage Return and Line Feed", "回车和换行"),
    TAG("Read Bar Result", "读码结果"),
    TAG("read bar result", "读码结果"),
    TAG("Frame Time", "图像帧时间"),
    TAG("Incremental Value", "递增值"),
    TAG("Code Number", "条码数量"),
    TAG("Algo Time", "算法耗时"),
    TAG("Line Feed", "换行"),
    TAG("Carriage Return", "回车"),
    TAG("Horizontal Tab", "水平制表符"),
    TAG("Vertical Tab", "垂直制表符"),
    TAG("Station Name", "站名"),
    TAG("Code Sub Quality Evaluation", "打码评级子项"),
    TAG("L_Side Output Text", "DM码L边角度区域文本"),
    TAG("Frame Code Time", "读图识码时间"),
    TAG("image", "图像"),
    TAG("frame_time", "帧时间"),
    TAG("Device ip", "IP地址"),
    TAG("OK/NG", "OK/NG"),
    TAG("Year", "年"),
    TAG("Month", "月"),
    TAG("Day", "日"),
};
#undef TAG

/// The source text by either form. Where two rows share a form the first holds.
const QHash<QString, const char *> &sourceTexts()
{
    static const QHash<QString, const char *> texts = [] {
        QHash<QString, const char *> table;
        for (const TagRow &row : TAGS) {
            for (const char *pForm : {row.english, row.chinese}) {
                const QString strForm = QString::fromUtf8(pForm);
                if (!table.contains(strForm)) {
                    table.insert(strForm, row.english);
                }
            }
        }
        return table;
    }();
    return texts;
}

} // namespace

QString VexaStringFormatTags::translated(const QString &strShown)
{
    const char *const pSource = sourceTexts().value(strShown, nullptr);
    return pSource ? QCoreApplication::translate(CONTEXT, pSource) : strShown;
}
