// Prints what the view costs, each figure as a ratio within one run or as a count, and exits 1 when one is over budget.
#include "benchmarks/view/BenchTree.h"
#include "host/controlkit/CustomStyle.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <QTextStream>

#include <algorithm>
#include <functional>
#include <malloc.h>
#include <thread>

namespace {

constexpr int RUNS = 5;
bool g_bOverBudget = false;

void report(const QString &strWhat, double fValue, double fBudget, const QString &strUnit)
{
    const bool bOver = fValue > fBudget;
    g_bOverBudget = g_bOverBudget || bOver;
    QTextStream(stdout) << QStringLiteral("%1 %2 %3 (at most %4)%5\n")
                               .arg(strWhat, -60)
                               .arg(fValue, 9, 'f', 2)
                               .arg(strUnit, -4)
                               .arg(fBudget)
                               .arg(bOver ? QStringLiteral("  OVER") : QString());
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double medianOfRuns(const std::function<double()> &run)
{
    std::vector<double> values;
    for (int i = 0; i < RUNS; ++i) {
        values.push_back(run());
    }
    return median(values);
}

double milliseconds(const std::function<void()> &act)
{
    QElapsedTimer elapsed;
    elapsed.start();
    act();
    return double(elapsed.nsecsElapsed()) / 1e6;
}

/// Runs the event loop until `done`, and gives the longest pass in milliseconds.
double longestPass(const std::function<bool()> &done)
{
    double fLongest = 0;
    while (!done()) {
        fLongest = std::max(fLongest, milliseconds([] { QCoreApplication::processEvents(); }));
    }
    return fLongest;
}

/// Editors without a view: made, placed and shown in a plain parent.
double bareWidgets(int nRows)
{
    QWidget parent;
    return milliseconds([&] {
        parent.resize(600, 900);
        for (int i = 0; i < nRows; ++i) {
            if (QWidget *const pEditor = BenchTree::makeBareEditor(i, &parent)) {
                pEditor->setGeometry(300, i * 38, 280, 32);
            }
        }
        parent.show();
        QCoreApplication::processEvents();
        parent.grab();
    });
}

struct OpenTimes
{
    double fTotal = 0;
    double fLongestPass = 0;
};

OpenTimes openView(int nRows)
{
    BenchTree tree(nRows);
    OpenTimes times;
    times.fTotal = milliseconds([&] {
        times.fLongestPass = milliseconds([&] { tree.open(true); });
        times.fLongestPass = std::max(times.fLongestPass, milliseconds([&] { tree.show(); }));
        times.fLongestPass = std::max(times.fLongestPass,
                                      longestPass([&] { return !tree.view().hasWaitingRows(); }));
        tree.settle();
        tree.window().grab();
    });
    return times;
}

void measureOpening()
{
    openView(500); // fonts, styles
    std::vector<double> ratios;
    std::vector<double> passes;
    for (int i = 0; i < RUNS; ++i) {
        const double fBare = bareWidgets(5000);
        const OpenTimes times = openView(5000);
        ratios.push_back(times.fTotal / fBare);
        passes.push_back(times.fLongestPass);
    }
    report(QStringLiteral("open and first show, 5000 rows, against bare widgets"), median(ratios),
           1.5, QStringLiteral("x"));
    report(QStringLiteral("longest GUI pass while opening 5000 rows"), median(passes), 50,
           QStringLiteral("ms"));
}

struct Operation
{
    const char *name;
    void (*prepare)(BenchTree &tree);
    void (*act)(BenchTree &tree);
};

const Operation OPERATIONS[] = {
    {"expand all", [](BenchTree &tree) { tree.view().collapseAll(); },
     [](BenchTree &tree) { tree.view().expandAll(); }},
    {"collapse all", [](BenchTree &tree) { tree.view().expandAll(); },
     [](BenchTree &tree) { tree.view().collapseAll(); }},
    {"search", [](BenchTree &tree) { tree.view().setSearchText(QString()); },
     [](BenchTree &tree) { tree.view().setSearchText(QStringLiteral("7")); }},
    {"clear a search", [](BenchTree &tree) { tree.view().setSearchText(QStringLiteral("7")); },
     [](BenchTree &tree) { tree.view().setSearchText(QString()); }},
    {"resize", [](BenchTree &tree) { tree.window().resize(600, 900); },
     [](BenchTree &tree) { tree.window().resize(700, 800); }},
};

double timeOf(BenchTree &tree, const Operation &operation)
{
    return medianOfRuns([&] {
        operation.prepare(tree);
        tree.settle();
        return milliseconds([&] {
            operation.act(tree);
            tree.settle();
            tree.view().viewport()->repaint();
        });
    });
}

double timeOfChange(BenchTree &tree)
{
    int nRound = 0;
    return medianOfRuns([&] {
        ++nRound;
        return milliseconds([&] {
            std::thread worker([&] { tree.changeAllValues(nRound); });
            worker.join();
            tree.settle();
            tree.settle();
        });
    });
}

void measureOperations()
{
    BenchTree plain(5000);
    plain.open(false);
    plain.show();
    BenchTree full(5000);
    full.open(true);
    full.show();
    full.settle();
    for (const Operation &operation : OPERATIONS) {
        report(QStringLiteral("%1, 5000 rows, against no editors").arg(operation.name),
               timeOf(full, operation) / timeOf(plain, operation), 5, QStringLiteral("x"));
    }
    int nRound = 100;
    report(QStringLiteral("longest GUI pass while a worker changes 5000 features"),
           medianOfRuns([&] {
               std::atomic<bool> bDone{false};
               ++nRound;
               std::thread worker([&] {
                   full.changeAllValues(nRound);
                   bDone = true;
               });
               const double fLongest =
                   longestPass([&] { return bDone && !full.view().hasWaitingRows(); });
               worker.join();
               full.settle();
               return fLongest;
           }),
           16, QStringLiteral("ms"));
}

void measureGrowth()
{
    const double fOpen = medianOfRuns([] { return openView(8000).fTotal / openView(4000).fTotal; });
    report(QStringLiteral("growth from 4000 to 8000 rows: open"), fOpen, 2.4, QStringLiteral("x"));
    BenchTree small(4000);
    BenchTree large(8000);
    for (BenchTree *pTree : {&small, &large}) {
        pTree->open(true);
        pTree->show();
        pTree->settle();
    }
    for (const int nOperation : {0, 3}) {
        const Operation &operation = OPERATIONS[nOperation];
        report(QStringLiteral("growth from 4000 to 8000 rows: %1").arg(operation.name),
               timeOf(large, operation) / timeOf(small, operation), 2.4, QStringLiteral("x"));
    }
    report(QStringLiteral("growth from 4000 to 8000 rows: all values changed"),
           timeOfChange(large) / timeOfChange(small), 2.4, QStringLiteral("x"));
}

double heldKilobytes(int nRows)
{
    const size_t nBefore = mallinfo2().uordblks;
    BenchTree tree(nRows);
    tree.open(true);
    tree.show();
    tree.settle();
    tree.changeAllValues(1);
    tree.settle();
    return double(mallinfo2().uordblks - nBefore) / 1024;
}

void measureMemory()
{
    heldKilobytes(500);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const double fSmall = heldKilobytes(2000);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const double fLarge = heldKilobytes(8000);
    report(QStringLiteral("memory a row from 2000 rows on"), (fLarge - fSmall) / 6000, 8,
           QStringLiteral("KiB"));
}

} // namespace

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    CustomStyle::install(application);
    struct Subject
    {
        const char *name;
        void (*measure)();
    };
    const Subject subjects[] = {{"opening", measureOpening},
                                {"operations", measureOperations},
                                {"growth", measureGrowth},
                                {"memory", measureMemory}};
    // Without an argument all subjects, else the named ones.
    const QStringList wanted = application.arguments().mid(1);
    for (const Subject &subject : subjects) {
        if (wanted.isEmpty() || wanted.contains(subject.name)) {
            subject.measure();
        }
    }
    return g_bOverBudget ? 1 : 0;
}
