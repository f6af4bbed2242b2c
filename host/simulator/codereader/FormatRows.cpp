#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/codereader/Protocols.h"
#include "host/simulator/description/PlainRows.h"

namespace {

constexpr quint32 kFormatLength = 256;

/// What a format string may hold: the name is the tag, <codecontent>.
const QVector<EntryRow> &resultParts()
{
    static const QVector<EntryRow> kRows = {
        {"codecontent", 0, "条码内容", {}, "Code Content"},
        {"codetype", 1, "条码类型", {}, "Code Type"},
        {"angle", 2, "角度", {}, "Angle"},
        {"vertex", 3, "条码顶点坐标", {}, "Code Vertex Coordinate"},
        {"center", 4, "条码中心坐标", {}, "Code Central Coordinate"},
        {"lsideangle", 5, "L边角度", {"LDirectionOn"}, "Angle of L Shaped Side"},
        {"dmlsideangle", 6, "DM码 L边角度", {"DMCodeOn"}, "Angle of DMcode L Shaped Side"},
        {"triggertime", 7, "触发开始时间", {}, "Trigger Start Time"},
        {"score", 8, "读码评分", {}, "Code Score"},
        {"mirrormark", 9, "镜像标记", {}, "Mirror Mark"},
        {"quality", 10, "打码评级", {"QualityEnable_Ava"}, "Code Quality Evaluation"},
        {"triggerno", 11, "触发号", {}, "Trigger No."},
        {"frameno", 12, "帧号", {}, "Frame No."},
        {"pollingparam", 13, "轮询参数信号", {}, "Polling Parameter"},
        {"roino", 14, "ROI号", {}, "ROI No."},
        {"crlf", 15, "回车和换行", {}, "Carriage Return and Line Feed"},
        {"readresult", 16, "读码结果", {}, "Read Bar Result"},
        {"frametime", 17, "图像帧时间", {}, "Frame Time"},
        {"increment", 18, "递增值", {}, "Incremental Value"},
        {"codenum", 19, "条码数量", {}, "Code Number"},
        {"algotime", 20, "算法耗时", {}, "Algo Time"},
        {"lf", 21, "换行", {}, "Line Feed"},
        {"cr", 22, "回车", {}, "Carriage Return"},
        {"tab", 23, "水平制表符", {}, "Horizontal Tab"},
        {"vtab", 24, "垂直制表符", {}, "Vertical Tab"},
        {"station", 25, "站名", {}, "Station Name"},
        {"subquality", 26, "打码评级子项", {"QualityEnable_Ava"}, "Code Sub Quality Evaluation"},
        {"lsidetext", 27, "DM码L边角度区域文本", {"LDirectionOn"}, "L_Side Output Text"},
        {"framecodetime", 28, "读图识码时间", {}, "Frame Code Time"},
    };
    return kRows;
}

const QVector<EntryRow> &directoryParts()
{
    static const QVector<EntryRow> kRows = {
        {"deviceip", 0, "IP地址", {}, "Device ip"},
        {"result", 1, "OK/NG", {}, "OK/NG"},
        {"year", 2, "年", {}, "Year"},
        {"month", 3, "月", {}, "Month"},
        {"day", 4, "日", {}, "Day"},
        {"station", 5, "站名", {}, "Station Name"},
    };
    return kRows;
}

const QVector<EntryRow> &pictureParts()
{
    static const QVector<EntryRow> kRows = {
        {"codecontent", 0, "条码内容", {}, "Code Content"},
        {"frame_time", 1, "帧时间", {}, "frame_time"},
        {"frameno", 2, "帧号", {}, "Frame No."},
        {"triggerno", 3, "触发号", {}, "Trigger No."},
        {"result", 4, "读码结果", {}, "read bar result"},
        {"increment", 5, "递增值", {}, "Incremental Value"},
        {"lsideangle", 6, "L边角度", {"LDirectionOn"}, "Angle of L Shaped Side"},
    };
    return kRows;
}

const QVector<EntryRow> &uploadParts()
{
    static const QVector<EntryRow> kRows = {
        {"image", 0, "图像", {}, "image"},
        {"codecontent", 1, "条码内容", {}, "Code Content"},
        {"frame_time", 2, "帧时间", {}, "frame_time"},
        {"codenum", 3, "条码数量", {}, "Code Number"},
    };
    return kRows;
}

/// A string of fixed text and tags, and the enumeration whose entries are its tags.
struct FormatRow
{
    QByteArray m_strFormat;
    QByteArray m_strSource;
    QByteArray m_strTitle;
    QByteArray m_strTitleCn;
    const char *m_strInitial;
    const char *m_strAvailable; ///< of the string; the tags can always be read
    const QVector<EntryRow> &m_parts;
};

void addFormat(FeatureTable &t, const FormatRow &row)
{
    const QByteArray description = "Format of the " + row.m_strTitle + ": text and tags.";
    const QByteArray nameCn = row.m_strTitleCn + "格式";
    const QByteArray descriptionCn = row.m_strTitleCn + "的格式，由文本与标签组成。";
    FeatureBuilder format =
        t.string(row.m_strFormat.constData(),
                 {description.constData(), nameCn.constData(), descriptionCn.constData()},
                 Text(kFormatLength, row.m_strInitial));
    format.streamable().custom();
    if (*row.m_strAvailable) {
        format.available(row.m_strAvailable);
    }
    const QByteArray sourceDescription = "Tags that the format of the " + row.m_strTitle
        + " can hold. What reading does not deliver is left out.";
    const QByteArray sourceCn = row.m_strTitleCn + "数据源";
    const QByteArray sourceDescriptionCn =
        row.m_strTitleCn + "格式中可用的标签，不含读码未提供的内容。";
    addRows(t,
            QVector<ChoiceRow>{{row.m_strSource.constData(),
                                {sourceDescription.constData(), sourceCn.constData(),
                                 sourceDescriptionCn.constData()},
                                row.m_parts,
                                0,
                                RowOptions().transient().expert()}});
}

} // namespace

void addReaderFormatRows(FeatureTable &table)
{
    table.category(
        "FormatControl",
        {"Formats of results, names and directories.", "格式设置", "结果、文件名与目录的格式。"},
        0x50000, "CommunicationControl");
    table.intSwissKnife("LDirectionOn", "ENABLE <> 0", {{"ENABLE", "LDirectionEnableReg"}});
    table.intSwissKnife("DMCodeOn", "(CODE <> 0) && (SIDE <> 0)",
                        {{"CODE", "DMCodeReg"}, {"SIDE", "LDirectionEnableReg"}});
    for (const ProtocolRow &protocol : readerProtocols()) {
        const QByteArray prefix = protocol.m_strPrefix;
        if (prefix != "Ftp") {
            addFormat(table,
                      {prefix + "FormatString", prefix + "FormatSourceData",
                       QByteArray("results by ") + protocol.m_strTitle,
                       QByteArray(protocol.m_strTitleCn) + "输出", "<codecontent>",
                       protocol.m_strAvailable, resultParts()});
        }
    }
    addFormat(table,
              {"FtpFormatDirectoryString", "FTPFormatDirectorySettings", "directory of uploads",
               "FTP上传目录", "<year>/<month>/<day>/", "", directoryParts()});
    addFormat(table,
              {"FtpFormatResultString", "FTPFormatResultSetting", "content of uploads",
               "FTP上传内容", "<image>,<codecontent>,", "", uploadParts()});
    addFormat(table,
              {"ResSet_Ftp_Picture_Name", "ResSet_Ftp_FileName_SourceData",
               "names of uploaded pictures", "FTP图像名称", "<codecontent>_<frame_time>", "",
               pictureParts()});
    addFormat(table,
              {"ResSet_Emmc_Picture_Name", "ResSet_Emmc_FileName_SourceData",
               "names of stored pictures", "本地图像名称", "<frame_time>", "", pictureParts()});
}
