#pragma once

#include <QList>
#include <QWidget>

class QLabel;

namespace tessary {

class SelfCheckRunner;

// The self-check's own window: one row per check with its status, finding
// and what to do, filled in as the checks finish. The runner must outlive it.
class SelfCheckWindow : public QWidget {
    Q_OBJECT

public:
    explicit SelfCheckWindow(const SelfCheckRunner &runner, QWidget *parent = nullptr);

private:
    struct Row {
        QLabel *icon;
        QLabel *finding;
        QLabel *remedy;
    };

    void onChecked(qsizetype index);
    void updateSummary();
    void copyReport();

    const SelfCheckRunner &m_runner;
    QLabel *m_summary;
    QList<Row> m_rows;
};

} // namespace tessary
