#include "platform/fake/clipboard/fake_pasteboard.h"

namespace tessary {

void FakePasteboard::setContent(Content content) { change(std::move(content)); }

void FakePasteboard::copyText(const QString &text, const QStringList &extraTypes)
{
    change({.types = QStringList{textType} + extraTypes, .fileUrls = {}, .string = text, .image = std::nullopt});
}

void FakePasteboard::readContent(
    const QSet<QString> &refusedTypes, std::function<void(std::optional<PasteboardContent>)> done)
{
    ++m_typeReads;
    PasteboardContent read{.types = m_content.types};
    const bool refused = std::any_of(
        read.types.cbegin(), read.types.cend(), [&](const QString &type) { return refusedTypes.contains(type); });
    if (refused) {
        done(read);
        return;
    }
    if (!m_content.fileUrls.isEmpty() || m_content.string || m_content.image)
        ++m_contentReads;
    read.fileUrls = m_content.fileUrls;
    read.string = m_content.string;
    const bool textless = read.fileUrls.isEmpty() && (!read.string || read.string->trimmed().isEmpty());
    if (textless)
        read.image = m_content.image;
    if (holdPictureReads && read.image)
        m_heldReads.append([done = std::move(done), read] { done(read); });
    else
        done(read);
}

void FakePasteboard::answerHeldReads()
{
    while (!m_heldReads.isEmpty())
        m_heldReads.takeLast()();
}

void FakePasteboard::readString(std::function<void(std::optional<QString>)> done)
{
    if (m_content.string)
        ++m_contentReads;
    done(m_content.string);
}

void FakePasteboard::clear() { change({}); }

void FakePasteboard::writeString(const QString &text) { copyText(text); }

void FakePasteboard::writeImage(const QByteArray &png)
{
    if (png.isEmpty())
        return;
    change({.types = {imageType}, .fileUrls = {}, .string = std::nullopt, .image = PasteboardImage{.png = png}});
}

void FakePasteboard::writeFileUrls(const QList<QUrl> &urls)
{
    change({.types = {fileUrlsType}, .fileUrls = urls, .string = std::nullopt, .image = std::nullopt});
}

void FakePasteboard::change(Content content)
{
    m_content = std::move(content);
    ++m_changeCount;
    if (m_changed)
        m_changed();
}

} // namespace tessary
