#pragma once

#include <QString>

namespace tessary {

struct QueryOptions {
    QString text;
    bool json = false;
    bool files = false;
};

int runQueryCommand(int argc, char **argv, const QueryOptions &options);

} // namespace tessary
