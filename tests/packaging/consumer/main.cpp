#include <QApplication>

#include <model/CTreeIntergerItemValue.h>
#include <model/VexaPropertyTreeItem.h>
#include <shell/VexaMainFeatureWidget.h>
#include <tree/VexaFeatureTree.h>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    VexaMainFeatureWidget *widget = VexaMainFeatureWidget::instance();
    widget->show();

    VexaPropertyTreeItem item;
    item.setTagName(QStringLiteral("Integer"));
    const auto *value = dynamic_cast<CTreeIntergerItemValue *>(item.value());
    const bool works = value && value->type() == CTreeIntergerItemValue::KIND_DECIMAL
        && !widget->isFeatureTreeExist(1)
        && widget->metaObject()->inherits(&QWidget::staticMetaObject);
    delete widget;
    return works ? 0 : 1;
}
