#pragma once

#include <QFuture>
#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QThreadPool>

#include <memory>
#include <type_traits>

namespace tessary {

// Runs `work` on the global thread pool and hands its result to `done` on
// `context`'s thread; nothing is delivered once `context` is gone. `work` must
// not touch anything the caller keeps using.
template <typename Work, typename Done> void runInBackground(QObject *context, Work work, Done done)
{
    using Result = std::invoke_result_t<Work &>;
    auto promise = std::make_shared<QPromise<Result>>();
    // Owned by the context, so its destruction drops the delivery.
    auto *watcher = new QFutureWatcher<Result>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, watcher, [watcher, done = std::move(done)] {
        done(watcher->result());
        watcher->deleteLater();
    });
    watcher->setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, work = std::move(work)]() mutable {
        promise->start();
        promise->addResult(work());
        promise->finish();
    });
}

} // namespace tessary
