// The longest time the main thread of a monitoring ClipboardStore over the X11
// pasteboard goes without running its event loop while big copies arrive:
//   screenshot  one 40-megapixel picture (PNG, copied by xclip)
//   text        one text of 1 MB
//   burst       200 texts at 20 per second
// A 1 ms timer on the main thread measures the gaps, and the thread's CPU
// time within each: on a busy machine a gap also holds the time the thread
// waited for a CPU, while the CPU time is the work that held the event loop.
// Needs DISPLAY and xclip;
// bench/clipboard/main_thread_stall.sh sets up a session.
#include "core/clipboard/clipboard_store.h"
#include "platform/x11/clipboard/x11_pasteboard.h"

#include <QBuffer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessary {
namespace {

using Clock = std::chrono::steady_clock;

Clock::duration threadCpuTime()
{
    timespec cpu{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &cpu);
    return std::chrono::seconds(cpu.tv_sec) + std::chrono::nanoseconds(cpu.tv_nsec);
}

// Runs xclip to completion; its child keeps serving the selection. Spawned
// without copying this process's page tables (as fork would), which would
// hold every thread of a process with a large picture in memory.
bool xclip(const QStringList &arguments)
{
    QList<QByteArray> words{"xclip", "-selection", "clipboard"};
    for (const QString &argument : arguments)
        words.append(argument.toLocal8Bit());
    std::vector<char *> argv;
    for (QByteArray &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    if (posix_spawnp(&pid, "xclip", nullptr, nullptr, argv.data(), environ) != 0)
        return false;
    int status = 0;
    return waitpid(pid, &status, 0) == pid && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// A picture with noisy patches, as large on disk as a real screenshot with
// photos in it, yet small enough as canonical PNG (under 25 MB) to be recorded.
QByteArray screenshotPng(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    auto *random = QRandomGenerator::global();
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x)
            line[x] = (x / 64 + y / 64) % 10 == 0 ? random->generate() : qRgb(x % 256, y % 256, 128);
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG", 90);
    return png;
}

class StallRun {
public:
    StallRun()
        : m_store(m_dir.path(), m_pasteboard)
    {
        m_store.retentionDays = 0;
        m_store.maxItems = 1000;
        m_store.startMonitoring();
        m_tick.setTimerType(Qt::PreciseTimer);
        m_tick.setInterval(1);
        QObject::connect(&m_tick, &QTimer::timeout, &m_tick, [this] {
            const auto now = Clock::now();
            const auto ran = threadCpuTime();
            if (m_measuring) {
                m_longest = std::max(m_longest, now - m_last);
                m_longestBusy = std::max(m_longestBusy, ran - m_lastRan);
            }
            m_last = now;
            m_lastRan = ran;
        });
        m_tick.start();
    }

    // `copy` runs on a thread of its own; measuring stops `settleMs` after the
    // history has `expected` more entries (or after a minute).
    void scenario(const char *name, int expected, const std::function<void()> &copy)
    {
        const qsizetype before = m_store.items().size();
        m_longest = {};
        m_longestBusy = {};
        m_last = Clock::now();
        m_lastRan = threadCpuTime();
        m_measuring = true;
        std::atomic<bool> copied = false;
        std::thread driver([&] {
            copy();
            copied = true;
        });
        const auto deadline = Clock::now() + std::chrono::minutes(1);
        const auto start = Clock::now();
        while ((!copied || m_store.items().size() < before + expected) && Clock::now() < deadline)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        const auto settle = Clock::now() + std::chrono::milliseconds(500);
        while (Clock::now() < settle)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        m_measuring = false;
        driver.join();
        using Ms = std::chrono::duration<double, std::milli>;
        std::printf("%-10s recorded %lld of %d in %.2f s; longest main-thread stall %.1f ms, longest CPU time "
                    "between two ticks %.1f ms\n",
            name, static_cast<long long>(m_store.items().size() - before), expected, seconds, Ms(m_longest).count(),
            Ms(m_longestBusy).count());
    }

    QString file(const QString &name) const { return m_dir.filePath(name); }

private:
    QTemporaryDir m_dir;
    X11Pasteboard m_pasteboard;
    ClipboardStore m_store;
    QTimer m_tick;
    bool m_measuring = false;
    Clock::time_point m_last;
    Clock::duration m_lastRan{};
    Clock::duration m_longest{};
    Clock::duration m_longestBusy{};
};

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

} // namespace
} // namespace tessary

int main(int argc, char **argv)
{
    using namespace tessary;
    QGuiApplication app(argc, argv);
    StallRun run;

    const QString picture = run.file(QStringLiteral("screenshot.png"));
    writeFile(picture, screenshotPng(7744, 5164));
    std::printf("40-megapixel PNG: %.1f MB\n", double(QFileInfo(picture).size()) / 1e6);
    run.scenario("screenshot", 1, [&] {
        xclip({QStringLiteral("-t"), QStringLiteral("image/png"), QStringLiteral("-i"), picture});
    });

    const QString text = run.file(QStringLiteral("text.txt"));
    writeFile(text, QByteArray(999'990, 'a') + "the end");
    run.scenario("text", 1, [&] { xclip({QStringLiteral("-i"), text}); });

    run.scenario("burst", 200, [&] {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < 200; ++i) {
            std::this_thread::sleep_until(start + std::chrono::milliseconds(50 * i));
            const QString path = run.file(QStringLiteral("burst.txt"));
            writeFile(path, "burst copy " + QByteArray::number(i));
            xclip({QStringLiteral("-i"), path});
        }
    });
    return 0;
}
