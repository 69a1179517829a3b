// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <optional>
#include <stop_token>

namespace dugwise {

/// One file of a listing.
struct ListedFile
{
    QString folderPath; ///< shared by all files of a folder
    QString name;

    [[nodiscard]] QString path() const;
};

/// What becomes of names that begin with a dot, files and folders.
enum class HiddenNames { skipped, listed };

/// All regular files below `folder`, depth first, the entries of a folder in the byte order of
/// their names and a subfolder's files at the place of its name. Without those that are hidden,
/// unless asked for; links are neither followed nor listed; packages (folders that stand for one
/// thing, such as application bundles) are not entered. Names that are not UTF-8 cannot be written
/// in a path and are left out, and so is whatever cannot be read. Absent when `folder` itself
/// cannot be listed.
[[nodiscard]] std::optional<QList<ListedFile>>
listFolder(const QString &folder,
           const std::stop_token &stop = {},
           HiddenNames hidden = HiddenNames::skipped);

/// Whether a folder of this name is a package.
[[nodiscard]] bool isPackageName(const QString &name);

} // namespace dugwise
