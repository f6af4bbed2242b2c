#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/DeviceFiles.h"
#include "host/simulator/sfnc/StandardRows.h"

void addFileAccessRows(FeatureTable &t, const QVector<DeviceFile> &files)
{
    t.category("FileAccessControl",
               {"Features that read and write the files of the device.", "文件访问控制",
                "读写设备内文件的特征。"},
               0x18000, "Root", "Guru");
    const auto count = quint32(files.size());
    FeatureBuilder selector = t.enumeration(
        "FileSelector", {"Selects the file of the device.", "文件选择", "选择设备中的文件。"});
    for (int i = 0; i < files.size(); ++i) {
        selector.entryShown(files.at(i).m_strEntry, files.at(i).m_strDisplayName, i,
                            files.at(i).m_strNameCn);
    }
    selector.guru().in(Int(4, files.size() - 1).transient());
    t.intSwissKnife("FileIsOpen", "STATE <> 0", {{"STATE", "FileStateReg"}});
    t.intSwissKnife("FileIsClosed", "STATE = 0", {{"STATE", "FileStateReg"}});
    t.registerNode("FileStateReg", Int(4, 0).readOnly().moving().indexedBy("FileSelector", count));
    t.enumeration("FileOperationSelector",
                  {"Selects the operation that FileOperationExecute runs on the selected file.",
                   "文件操作选择", "选择对所选文件执行的操作。"})
        .entry("Open", 0, "打开", {"FileIsClosed"})
        .entry("Close", 1, "关闭", {"FileIsOpen"})
        .entry("Read", 2, "读取", {"FileIsOpen"})
        .entry("Write", 3, "写入", {"FileIsOpen"})
        .entry("Delete", 4, "删除", {"FileIsClosed"})
        .guru()
        .in(Int(4, 0).transient())
        .selectedBy("FileSelector");
    t.command("FileOperationExecute",
              {"Executes the selected operation on the selected file.", "执行文件操作",
               "对所选文件执行所选操作。"})
        .guru()
        .runs(Int(4, 0).transient().moving(100))
        .selectedBy("FileOperationSelector")
        .selectedBy("FileSelector");
    t.enumeration("FileOpenMode",
                  {"Access mode in which the selected file is opened.", "文件打开模式",
                   "打开所选文件时的访问模式。"})
        .entry("Read", 0, "只读")
        .entry("Write", 1, "只写")
        .entry("ReadWrite", 2, "读写")
        .guru()
        .in(Int(4, 0).transient())
        .selectedBy("FileSelector");
    t.rawRegister("FileAccessBuffer", Text(kFileBufferSize, {}).at(0x20000).transient().moving());
    t.integer("FileAccessOffset",
              {"Position in the file at which the next operation begins.", "文件访问偏移",
               "下一次文件操作的起始位置。"})
        .in(Int(8, 0).transient())
        .range("0", QByteArray::number(kLargestFile - 1), "1")
        .unit("B")
        .guru()
        .selectedBy("FileSelector");
    t.integer(
         "FileAccessLength",
         {"Number of bytes of the next operation.", "文件访问长度", "下一次文件操作的字节数。"})
        .in(Int(8, 512).transient())
        .range("0", "1024", "1")
        .unit("B")
        .guru()
        .selectedBy("FileSelector");
    t.enumeration(
         "FileOperationStatus",
         {"Status of the last operation on a file.", "文件操作状态", "最近一次文件操作的状态。"})
        .entry("Success", 0, "成功")
        .entry("Failure", 1, "失败")
        .guru()
        .in(Int(4, 0).readOnly().moving())
        .selectedBy("FileOperationSelector");
    t.integer("FileOperationResult",
              {"Number of bytes that the last operation read or wrote.", "文件操作结果",
               "最近一次操作读写的字节数。"})
        .in(Int(8, 0).readOnly().moving())
        .unit("B")
        .guru()
        .selectedBy("FileOperationSelector");
    t.integer("FileSize", {"Size of the selected file.", "文件大小", "所选文件的大小。"})
        .in(Int(8, 0).readOnly().moving().indexedBy("FileSelector", count))
        .unit("B")
        .guru()
        .selectedBy("FileSelector");
}
