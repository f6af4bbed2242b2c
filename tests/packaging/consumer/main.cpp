#include <QApplication>
#include <QDomElement>

#include <model/CTreeIntergerItemValue.h>
#include <model/IVexaFeatureWidget.h>
#include <model/VexaPropertyTreeItem.h>
#include <shell/VexaMainFeatureWidget.h>
#include <tree/VexaFeatureTree.h>

/// Pages of a host's own.
class Pages : public IVexaFeatureWidget
{
public:
    Pages()
        : IVexaFeatureWidget(1)
    {
    }
    bool setFeatureValue(const QString &, const QString &, const QVariant &) override
    {
        return false;
    }
    VexaPropertyTreeItem *createPageRoot() override
    {
        auto *root = new VexaPropertyTreeItem;
        root->setIsFeatureTreeItem(false);
        createPageItems(root, QDomElement(), nullptr);
        setSpinStep(pageItem(root, QString()), 1, false);
        return root;
    }
};

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    VexaMainFeatureWidget *widget = VexaMainFeatureWidget::instance();
    widget->show();

    VexaPropertyTreeItem item;
    item.setTagName(QStringLiteral("Integer"));
    const auto *value = dynamic_cast<CTreeIntergerItemValue *>(item.value());
    Pages pages;
    pages.setCameraID(1);
    const bool showsPages = pages.isInitialized(1);
    const bool works = value && value->type() == CTreeIntergerItemValue::KIND_DECIMAL
        && !widget->isFeatureTreeExist(1) && showsPages
        && widget->metaObject()->inherits(&QWidget::staticMetaObject);
    delete widget;
    return works ? 0 : 1;
}
