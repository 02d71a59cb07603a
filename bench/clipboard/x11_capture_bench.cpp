// End-to-end capture on a real X server: copies made by xclip, recorded by a
// monitoring ClipboardStore over the X11 pasteboard.
//   tessary_bench_x11_capture latency [copies=50]
//       one copy at a time: xclip finished -> entry in the history, p50/p90
//   tessary_bench_x11_capture rate [copies=1000] [per-second=10]
//       copies on a fixed schedule: how many of them the history captured
// Needs DISPLAY and xclip; bench/clipboard/x11_capture.sh sets up a session.
#include "core/clipboard/clipboard_store.h"
#include "platform/x11/clipboard/x11_pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace tessary {
namespace {

using Clock = std::chrono::steady_clock;

const QString marker = QStringLiteral("tessary bench copy ");

// Runs `xclip -i <file>` and returns once it has exited (its child keeps serving).
bool copyWithXclip(const QByteArray &display, const QByteArray &file)
{
    const char *argv[]
        = {"xclip", "-display", display.constData(), "-selection", "clipboard", "-i", file.constData(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int spawned = posix_spawnp(&pid, "xclip", &actions, nullptr, const_cast<char **>(argv), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    return spawned == 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

double percentile(std::vector<double> values, double p)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, static_cast<size_t>(p * double(values.size() - 1) + 0.5))];
}

class CaptureRun {
public:
    CaptureRun(int copies, int perSecond)
        : m_copies(copies)
        , m_perSecond(perSecond)
        , m_finished(copies)
        , m_recorded(copies)
        , m_finishedAt(size_t(copies))
        , m_recordedAt(size_t(copies))
        , m_recordedChange(size_t(copies))
        , m_store(m_dir.path(), m_pasteboard)
    {
        m_store.maxItems = copies + 10;
        m_store.retentionDays = 0;
        QObject::connect(&m_store, &ClipboardStore::itemsChanged, &m_store, [this] { onItemsChanged(); });
        // Connected after the pasteboard: runs once the change is counted.
        QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &m_store, [this] {
            m_reportedAt.push_back({m_pasteboard.changeCount(), Clock::now()});
        });
        m_store.startMonitoring();
    }

    int run()
    {
        std::thread driver([this] { drive(); });
        QGuiApplication::exec();
        driver.join();
        return report();
    }

private:
    void onItemsChanged()
    {
        const auto now = Clock::now();
        const auto &text = m_store.items().first().text;
        if (!text || !text->startsWith(marker))
            return;
        const int index = text->mid(marker.size()).section(u' ', 0, 0).toInt();
        if (index >= 0 && index < m_copies && !m_recorded[size_t(index)].load()) {
            m_recordedAt[size_t(index)] = now;
            m_recordedChange[size_t(index)] = m_store.lastChange();
            m_recorded[size_t(index)] = true;
        }
    }

    // On its own thread, so that the store's event loop runs undisturbed.
    void drive()
    {
        const QByteArray display = qgetenv("DISPLAY");
        const QByteArray file = (m_dir.path() + QStringLiteral("/copy.txt")).toLocal8Bit();
        const auto start = Clock::now();
        for (int i = 0; i < m_copies; ++i) {
            if (m_perSecond > 0)
                std::this_thread::sleep_until(start + std::chrono::milliseconds(1000 * i / m_perSecond));
            const QByteArray text
                = (marker + QString::number(i) + u' ' + QString::number(qint64(start.time_since_epoch().count())))
                      .toUtf8();
            if (FILE *out = std::fopen(file.constData(), "wb")) {
                std::fwrite(text.constData(), 1, size_t(text.size()), out);
                std::fclose(out);
            }
            const bool copied = copyWithXclip(display, file);
            m_finishedAt[size_t(i)] = Clock::now();
            m_finished[size_t(i)] = copied;
            if (m_perSecond == 0) {
                const auto deadline = Clock::now() + std::chrono::seconds(2);
                while (!m_recorded[size_t(i)].load() && Clock::now() < deadline)
                    std::this_thread::sleep_for(std::chrono::microseconds(200));
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
            }
        }
        std::this_thread::sleep_for(std::chrono::seconds(2));
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    }

    int report() const
    {
        int copied = 0;
        int captured = 0;
        int beforeExit = 0;
        std::vector<double> latencies;
        // Change reported -> entry: what the store itself takes (two requests to the owner included).
        std::vector<double> reading;
        for (size_t i = 0; i < size_t(m_copies); ++i) {
            copied += m_finished[i] ? 1 : 0;
            if (!m_recorded[i]) {
                if (i + 1 < size_t(m_copies))
                    std::printf("missed copy %zu: the next copy finished %.1f ms after it\n", i,
                        std::chrono::duration<double, std::milli>(m_finishedAt[i + 1] - m_finishedAt[i]).count());
                continue;
            }
            ++captured;
            const double ms = std::chrono::duration<double, std::milli>(m_recordedAt[i] - m_finishedAt[i]).count();
            beforeExit += ms < 0 ? 1 : 0;
            latencies.push_back(std::max(ms, 0.0));
            const auto reported = std::find_if(m_reportedAt.cbegin(), m_reportedAt.cend(),
                [&](const auto &change) { return change.first == m_recordedChange[i]; });
            if (reported != m_reportedAt.cend()) {
                reading.push_back(
                    std::chrono::duration<double, std::milli>(m_recordedAt[i] - reported->second).count());
            }
        }
        std::printf("copies made by xclip: %d of %d%s\n", copied, m_copies,
            m_perSecond > 0 ? qPrintable(QStringLiteral(" (%1 per second)").arg(m_perSecond)) : " (one at a time)");
        std::printf("copies captured in the history: %d of %d\n", captured, copied);
        std::printf("xclip finished -> entry: p50 %.2f ms, p90 %.2f ms, max %.2f ms (%d recorded before xclip's exit "
                    "was seen, counted as 0)\n",
            percentile(latencies, 0.5), percentile(latencies, 0.9), percentile(latencies, 1.0), beforeExit);
        std::printf(
            "change reported -> entry: p50 %.2f ms, p90 %.2f ms\n", percentile(reading, 0.5), percentile(reading, 0.9));
        return captured == copied && copied == m_copies ? 0 : 1;
    }

    int m_copies;
    int m_perSecond;
    std::vector<std::atomic<bool>> m_finished;
    std::vector<std::atomic<bool>> m_recorded;
    std::vector<Clock::time_point> m_finishedAt;
    std::vector<Clock::time_point> m_recordedAt;
    std::vector<qint64> m_recordedChange;
    // When each change count was reported by the X server, in order.
    std::vector<std::pair<qint64, Clock::time_point>> m_reportedAt;
    QTemporaryDir m_dir;
    X11Pasteboard m_pasteboard;
    ClipboardStore m_store;
};

} // namespace
} // namespace tessary

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    const QString mode = args.value(1);
    if (mode == QStringLiteral("latency"))
        return tessary::CaptureRun(args.value(2, QStringLiteral("50")).toInt(), 0).run();
    if (mode == QStringLiteral("rate"))
        return tessary::CaptureRun(
            args.value(2, QStringLiteral("1000")).toInt(), args.value(3, QStringLiteral("10")).toInt())
            .run();
    std::fprintf(stderr, "usage: %s latency [copies] | rate [copies] [per-second]\n", argv[0]);
    return 2;
}
