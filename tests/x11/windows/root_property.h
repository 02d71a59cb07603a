#pragma once

#include "test_desktop.h"

namespace tessary {

// A property on the root window for the life of the object.
class RootProperty {
public:
    RootProperty(const char *name, const char *cardinals)
        : m_name(QString::fromLatin1(name))
    {
        m_set = TestDesktop::run(QStringLiteral("xprop"),
            {QStringLiteral("-root"), QStringLiteral("-f"), m_name, QStringLiteral("32c"), QStringLiteral("-set"),
                m_name, QString::fromLatin1(cardinals)});
    }
    ~RootProperty()
    {
        TestDesktop::run(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("-remove"), m_name});
    }
    RootProperty(const RootProperty &) = delete;
    RootProperty &operator=(const RootProperty &) = delete;
    bool isSet() const { return m_set; }

private:
    QString m_name;
    bool m_set = false;
};

} // namespace tessary
