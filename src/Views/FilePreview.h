// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppState.h"
#include "Models/PreviewLoader.h"

#include <QObject>
#include <QVariant>
#include <QtQmlIntegration>

namespace dugwise {

/// What the preview panel shows of the selected result's file, and what its buttons do. Texts are
/// ready to be shown. Lives on the UI thread.
class FilePreview : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The session has it.")
    Q_PROPERTY(bool hasFile READ hasFile NOTIFY fileChanged)
    Q_PROPERTY(QString name READ name NOTIFY fileChanged)
    Q_PROPERTY(QString symbol READ symbol NOTIFY fileChanged)
    Q_PROPERTY(QString typeName READ typeName NOTIFY fileChanged)
    Q_PROPERTY(QVariantList facts READ facts NOTIFY fileChanged)
    Q_PROPERTY(QVariantList matchReasons READ matchReasons NOTIFY fileChanged)
    Q_PROPERTY(bool canPreview READ canPreview NOTIFY fileChanged)
    Q_PROPERTY(bool isGeneratingInsights READ isGeneratingInsights NOTIFY insightsChanged)
    Q_PROPERTY(bool hasInsights READ hasInsights NOTIFY insightsChanged)
    Q_PROPERTY(QString documentType READ documentType NOTIFY insightsChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY insightsChanged)
    Q_PROPERTY(QStringList keyPoints READ keyPoints NOTIFY insightsChanged)
    Q_PROPERTY(QStringList entities READ entities NOTIFY insightsChanged)
    Q_PROPERTY(bool isReading READ isReading NOTIFY contentChanged)
    Q_PROPERTY(bool hasText READ hasText NOTIFY contentChanged)
    Q_PROPERTY(QString text READ text NOTIFY contentChanged)
    Q_PROPERTY(QString markedText READ markedText NOTIFY contentChanged)
    Q_PROPERTY(QVariant thumbnail READ thumbnail NOTIFY contentChanged)

public:
    /// Both outlive the object.
    FilePreview(Platform &platform, AppState &appState, QObject *parent = nullptr);

    [[nodiscard]] bool hasFile() const { return m_result.has_value(); }
    /// Of the file; empty when none is selected, like all texts here.
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString symbol() const;
    [[nodiscard]] QString typeName() const;
    /// Maps of an icon, a label and a value.
    [[nodiscard]] QVariantList facts() const;
    /// Maps of an icon and a text, in the result's order.
    [[nodiscard]] QVariantList matchReasons() const;
    /// Whether the file is of a kind that has text.
    [[nodiscard]] bool canPreview() const;

    [[nodiscard]] bool isGeneratingInsights() const { return m_appState.isGeneratingInsights(); }
    /// Whether there are insights of this file, and not of another.
    [[nodiscard]] bool hasInsights() const { return insights().has_value(); }
    [[nodiscard]] QString documentType() const;
    [[nodiscard]] QString summary() const;
    [[nodiscard]] QStringList keyPoints() const;
    [[nodiscard]] QStringList entities() const;

    /// Whether the file's text is still to come.
    [[nodiscard]] bool isReading() const { return m_loader.isReading(); }
    [[nodiscard]] bool hasText() const { return m_loader.text().has_value(); }
    [[nodiscard]] QString text() const;
    /// The text as HTML with nothing in it but line breaks and a <b> around the request's words.
    [[nodiscard]] QString markedText() const;
    /// Of an image, as a QImage; null as long as there is none.
    [[nodiscard]] QVariant thumbnail() const;

    Q_INVOKABLE void generateInsights();
    Q_INVOKABLE void openFile();
    Q_INVOKABLE void revealFile();

Q_SIGNALS:
    void fileChanged();
    void insightsChanged();
    void contentChanged();

private:
    void takeResult();
    [[nodiscard]] std::optional<DocumentInsightsResult> insights() const;

    Platform &m_platform;
    AppState &m_appState;
    std::optional<SearchResult> m_result;
    PreviewLoader m_loader;
};

} // namespace dugwise
