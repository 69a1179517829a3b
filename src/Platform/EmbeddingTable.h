// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EmbeddingTableFormat.h"
#include "Platform/MappedText.h"
#include "Utilities/EnglishMorphology.h"

#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace dugwise {

/// What is known about English words, from a file that dugwise-build-embedding has made. It never
/// changes and can be used from all threads at once.
class EmbeddingTable final : public Lexicon
{
public:
    using Codes = EmbeddingFormat::Codes;
    using Vector = std::array<float, EmbeddingFormat::kVectorSize>;

    /// Maps the file into memory; absent when it cannot be read or is not a whole table of this
    /// version.
    [[nodiscard]] static std::optional<EmbeddingTable> open(const QString &path);
    /// The same of bytes in memory, which must outlive the table.
    [[nodiscard]] static std::optional<EmbeddingTable> read(std::string_view bytes);

    /// Differs between tables that differ.
    [[nodiscard]] std::uint64_t version() const { return m_header.checksum; }
    [[nodiscard]] std::size_t wordCount() const { return m_header.words; }

    /// Number of a word, from 0 on; absent when the table does not have it.
    [[nodiscard]] std::optional<std::uint32_t> find(std::string_view word) const;
    [[nodiscard]] std::string_view word(std::uint32_t number) const;
    /// Share of the word among those of the dictionary's own text, from 0 to 1; of a word that the
    /// table does not have when the number is absent.
    [[nodiscard]] float frequency(std::optional<std::uint32_t> number) const;
    /// How often the word was counted anywhere.
    [[nodiscard]] float count(std::uint32_t number) const;
    /// Its direction of meaning, to be read with EmbeddingFormat::kLevels; absent when it has none.
    [[nodiscard]] std::optional<Codes> meaning(std::uint32_t number) const;
    /// What all sentences have in common.
    [[nodiscard]] const Vector &mean() const { return m_mean; }

    [[nodiscard]] PartOfSpeechWeights weights(std::string_view word) const override;
    [[nodiscard]] std::vector<Irregular> irregularBases(std::string_view form) const override;

private:
    /// The parts of the file, each as its bytes.
    struct Sections
    {
        std::string_view mean;
        std::string_view words;
        std::string_view forms;
        std::string_view bases;
        std::string_view wordSlots;
        std::string_view formSlots;
        std::string_view text;
        std::string_view codes;
    };

    EmbeddingTable() = default;
    [[nodiscard]] bool divide(std::string_view bytes);
    [[nodiscard]] bool isSound();
    [[nodiscard]] bool isInText(std::uint32_t spelling) const;
    [[nodiscard]] std::string_view spelled(std::uint32_t spelling) const;
    template <typename Record>
    [[nodiscard]] std::optional<std::uint32_t>
    findIn(std::string_view slots, std::string_view records, std::string_view spelling) const;

    std::optional<MappedText> m_file; ///< what the sections look into, unless somebody else owns it
    EmbeddingFormat::Header m_header{};
    Sections m_sections;
    Vector m_mean{};
};

} // namespace dugwise
