#include "platform/fake/clipboard/fake_pasteboard.h"

namespace tessary {

void FakePasteboard::setContent(Content content) { change(std::move(content)); }

void FakePasteboard::copyText(const QString &text, const QStringList &extraTypes)
{
    change({.types = QStringList{textType} + extraTypes, .fileUrls = {}, .string = text, .image = std::nullopt});
}

QStringList FakePasteboard::types() const
{
    ++m_typeReads;
    return m_content.types;
}

QList<QUrl> FakePasteboard::fileUrls() const
{
    if (m_content.fileUrls.isEmpty())
        return {};
    ++m_contentReads;
    return m_content.fileUrls;
}

std::optional<QString> FakePasteboard::string() const
{
    if (!m_content.string)
        return std::nullopt;
    ++m_contentReads;
    return m_content.string;
}

void FakePasteboard::readImage(std::function<void(std::optional<PasteboardImage>)> done)
{
    if (m_content.image)
        ++m_contentReads;
    done(m_content.image);
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
