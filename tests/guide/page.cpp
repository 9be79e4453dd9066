#include "guide/page.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace guide {

lines lines_of(std::string const &name)
{
    std::ifstream file(FL_CHECKOUT "/" + name);
    EXPECT_TRUE(file.is_open()) << name;
    lines all;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        all.push_back(line.erase(0, std::min(line.find_first_not_of(' '), line.size())));
    }
    return all;
}

std::string all_tests()
{
    std::string all;
    for (auto const &entry : std::filesystem::recursive_directory_iterator(FL_CHECKOUT "/tests")) {
        if (entry.path().extension() != ".cpp")
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        all.append(std::istreambuf_iterator<char>(file), {});
    }
    return all;
}

std::vector<lines> blocks_of(lines const &page, std::string const &language)
{
    std::vector<lines> blocks;
    for (auto from = page.begin(); from != page.end(); ++from) {
        from = std::find(from, page.end(), "```" + language);
        if (from == page.end())
            break;
        auto const to = std::find(from, page.end(), "```");
        blocks.emplace_back(from + 1, to);
        from = to;
        if (from == page.end())
            break;
    }
    return blocks;
}

namespace {

lines cells_of(std::string const &row)
{
    lines cells;
    std::string cell;
    bool in_code = false;
    auto const finish = [&] {
        cell.erase(0, std::min(cell.find_first_not_of(' '), cell.size()));
        cell.erase(cell.find_last_not_of(' ') + 1);
        bool const is_code =
            cell.size() > 1 && cell.front() == '`' && cell.find('`', 1) == cell.size() - 1;
        cells.push_back(is_code ? cell.substr(1, cell.size() - 2) : cell);
        cell.clear();
    };
    for (char const unit : row.substr(1)) {
        in_code = in_code != (unit == '`');
        if (unit == '|' && !in_code)
            finish();
        else
            cell += unit;
    }
    return cells;
}

} // namespace

std::vector<lines> rows_of(std::string const &page, std::string const &heading)
{
    lines const all = lines_of(page);
    std::vector<lines> rows;
    for (auto row = std::find(all.begin(), all.end(), heading); row != all.end();
         row = std::find(row, all.end(), heading))
        for (row += 2; row != all.end() && !row->empty() && row->front() == '|'; ++row)
            rows.push_back(cells_of(*row));
    EXPECT_FALSE(rows.empty()) << page << ": " << heading;
    return rows;
}

std::string shown(std::string_view raw)
{
    raw.remove_prefix(1);
    std::size_t const indent = std::min(raw.find_first_not_of(' '), raw.size());
    std::string text;
    while (!raw.empty()) {
        std::size_t const end = std::min(raw.find('\n'), raw.size() - 1);
        std::string_view const line = raw.substr(0, end + 1);
        if (line.find_first_not_of(' ') != std::string_view::npos)
            text += line.substr(std::min(indent, line.find_first_not_of(' ')));
        raw.remove_prefix(end + 1);
    }
    return text;
}

void play(std::string const &page, std::string const &heading, checks const &rows)
{
    std::set<std::string> seen;
    for (lines const &row : rows_of(page, heading)) {
        SCOPED_TRACE(row[0]);
        EXPECT_TRUE(seen.insert(row[0]).second) << "stands there twice";
        auto const found = rows.find(row[0]);
        if (found == rows.end())
            ADD_FAILURE() << "no check";
        else
            found->second();
    }
    for (auto const &[name, check] : rows)
        EXPECT_TRUE(seen.count(name) == 1) << "no row: " << name;
}

} // namespace guide
