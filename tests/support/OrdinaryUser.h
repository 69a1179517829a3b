// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <unistd.h>

namespace dugwise::test {

/// As long as it lives the permissions of files hold for the process even where root runs it.
class OrdinaryUser
{
public:
    OrdinaryUser()
        : m_wasRoot(::geteuid() == 0)
    {
        if (m_wasRoot && ::seteuid(kNobody) != 0)
            qFatal("cannot give up the rights of root");
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)
    ~OrdinaryUser()
    {
        if (m_wasRoot && ::seteuid(0) != 0)
            qFatal("cannot take back the rights of root");
    }

private:
    static constexpr uid_t kNobody = 65534;
    bool m_wasRoot;
};

} // namespace dugwise::test
