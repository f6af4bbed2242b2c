#include "FuzzJob.h"

#include "model/ElementWalk.h"

#include <QHash>
#include <QTextCodec>

#include <utility>

namespace {

/// Lower than those of the program, so that their ends are reached in no time.
const EvalLimits LIMITS{24, 400, 32, 4000};

int s_lines = 0;

void countLine(QtMsgType, const QMessageLogContext &, const QString &)
{
    ++s_lines;
}

} // namespace

FuzzJob::FuzzJob(const QDomDocument &description)
    : m_description(description)
{
    const QDomElement root = m_description.documentElement();
    bool isEntry = false;
    for (QDomElement element = ElementWalk::next(root, root); !element.isNull();
         element = ElementWalk::next(element, root, !isEntry)) {
        isEntry = element.tagName() == QLatin1String("EnumEntry");
        const QString name = ElementWalk::name(element);
        if (isEntry || name.isEmpty()) {
            continue;
        }
        m_job.nodes.insert(name, element);
        for (QDomElement child = element.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            if (child.tagName() == QLatin1String("pSelected")) {
                m_job.selectedLinks.append({name, ElementWalk::text(child)});
            } else if (child.tagName() == QLatin1String("pFeature")) {
                m_job.categoryFeatures.append(child.text());
                m_job.featureCategories.insert(child.text(), name);
            }
        }
    }
    setDevice(root.attribute(QStringLiteral("DeviceType"), QStringLiteral("1")).toUInt());
}

FuzzJob::FuzzJob(const FuzzJob &other, unsigned int type)
    : m_description(other.m_description)
    , m_job(other.m_job)
{
    setDevice(type);
}

void FuzzJob::setDevice(unsigned int type)
{
    m_device = std::make_unique<FuzzDevice>(m_job.nodes, type);
    m_job.pBasicTask = m_device->basicTask();
    m_job.pStop = &m_stop;
    m_job.limits = LIMITS;
    m_job.pDone = &m_done;
    m_job.pTotal = &m_total;
}

int FuzzJob::takeLines()
{
    return std::exchange(s_lines, 0);
}

void FuzzJob::prepareProcess()
{
    qSetGlobalQHashSeed(0);
    qInstallMessageHandler(countLine);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}
