#include "host/workbench/FormatEdit.h"

#include "UtilityKit/VexaInterface.h"
#include "host/workbench/CameraPage.h"
#include "host/workbench/FormatEditDialog.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QPointer>

namespace {

QVector<FormatEditDialog::Tag> tagsOf(const VexaPropertyTreeItem *pSourceData, bool bChinese)
{
    QVector<FormatEditDialog::Tag> tags;
    const std::unique_ptr<CTreeItemValue> snapshot =
        pSourceData ? pSourceData->valueSnapshot() : nullptr;
    const auto *pValue = dynamic_cast<const CTreeEnumationItemValue *>(snapshot.get());
    if (!pValue) {
        return tags;
    }
    const QStringList shown = pValue->getDisplayList();
    const QStringList shownCn = pValue->getDisplayListCN();
    const QMap<QString, QString> names = pValue->getAllNameMap();
    for (int nEntry = 0; nEntry < shown.size(); ++nEntry) {
        const QString strEntry = names.key(shown.at(nEntry));
        if (!strEntry.isEmpty()) {
            tags.append({bChinese ? shownCn.value(nEntry, shown.at(nEntry)) : shown.at(nEntry),
                         QStringLiteral("<%1>").arg(strEntry)});
        }
    }
    return tags;
}

} // namespace

void FormatEdit::edit(QWidget *pParent, long lCameraID, VexaPropertyTreeItem *pText,
                      const VexaPropertyTreeItem *pSourceData, Objection objection)
{
    const std::unique_ptr<CTreeItemValue> snapshot = pText ? pText->valueSnapshot() : nullptr;
    const auto *pValue = dynamic_cast<const CTreeStringItemValue *>(snapshot.get());
    if (!pValue || pText->readOnly() || !pText->isValueCached()) {
        return;
    }
    const bool bChinese = VexaInterface::language(false) == QLatin1String("CH");
    const QString strNode = pValue->m_strNodeName;
    FormatEditDialog::Content content;
    content.strTitle = bChinese ? pValue->translateName() : pValue->displayName();
    content.strText = pValue->m_strValue;
    content.nMaxBytes = pValue->m_nMaxLength - 1;
    content.bBytes = strNode.contains(QLatin1String("TriggerHex"));
    content.tags = tagsOf(pSourceData, bChinese);
    content.objection = [objection, strNode](const QString &strText) {
        return objection(strNode, strText);
    };
    const QPointer<FormatEditDialog> pDialog = new FormatEditDialog(content, pParent);
    const bool bAccepted = pDialog->exec() == QDialog::Accepted;
    const QString strText = pDialog ? pDialog->text() : QString();
    delete pDialog;
    VexaFeatureTree *const pTree = CameraPage::tree(lCameraID);
    if (bAccepted && pTree && strText != content.strText
        && pTree->setFeatureValue(QStringLiteral("StringReg"), strNode, strText)) {
        pTree->afterSetFeatureValue(strNode);
    }
}
