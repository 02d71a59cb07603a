#pragma once

#include "core/platform/pasteboard.h"

namespace tessary {

// An in-memory pasteboard for core tests. Every change, scripted or written,
// bumps the change count and calls the changed handler synchronously (the
// harshest timing a backend may have). Reads answer before returning unless
// held. Counts the reads that would reach the owning application.
class FakePasteboard final : public Pasteboard {
public:
    struct Content {
        QStringList types = {};
        QList<QUrl> fileUrls = {};
        std::optional<QString> string = {};
        std::optional<PasteboardImage> image = {};
    };

    // Another application copies `content`.
    void setContent(Content content);
    // Another application copies a text, offering `extraTypes` besides plain text.
    void copyText(const QString &text, const QStringList &extraTypes = {});
    const Content &content() const { return m_content; }

    int typeReads() const { return m_typeReads; }
    int contentReads() const { return m_contentReads; }

    // While set, reads of content with a picture are held, as a platform that
    // decodes a large picture would; `answerHeldReads` answers them, newest first.
    bool holdPictureReads = false;
    void answerHeldReads();

    qint64 changeCount() const override { return m_changeCount; }
    void setChangedHandler(std::function<void()> handler) override { m_changed = std::move(handler); }
    void readContent(
        const QSet<QString> &refusedTypes, std::function<void(std::optional<PasteboardContent>)> done) override;
    void readString(std::function<void(std::optional<QString>)> done) override;
    void clear() override;
    void writeString(const QString &text) override;
    // Treats empty bytes as a picture that does not decode; pixel sizes are not known here.
    void writeImage(const QByteArray &png) override;
    void writeFileUrls(const QList<QUrl> &urls) override;

    static inline const QString textType = QStringLiteral("text/plain");
    static inline const QString imageType = QStringLiteral("image/png");
    static inline const QString fileUrlsType = QStringLiteral("text/uri-list");

private:
    void change(Content content);

    Content m_content;
    qint64 m_changeCount = 0;
    std::function<void()> m_changed;
    mutable int m_typeReads = 0;
    mutable int m_contentReads = 0;
    QList<std::function<void()>> m_heldReads;
};

} // namespace tessary
