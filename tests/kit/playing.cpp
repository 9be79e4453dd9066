#include "kit/playing.hpp"

#include <exception>

namespace kit {

using contract::facts::stage;
using contract::facts::step;

played play(std::string const &script, contract::facts::verb_table const &more)
{
    played told;
    try {
        stage on_stage(more);
        told.obstacle = on_stage.obstacle(script);
        if (!told.obstacle.empty())
            return told;
        for (std::string const &text : contract::facts::steps_of(script)) {
            step const next = contract::facts::parse_step(text);
            std::string answer;
            DWORD const code = on_stage.run(next, answer);
            told.agrees =
                told.agrees && code == next.code && answer == next.answer.value_or(answer);
            told.seen += (told.seen.empty() ? "" : "; ") + written_again(next, code, answer);
        }
    } catch (std::exception const &failed) {
        told.obstacle = (told.seen.empty() ? "" : "behind " + told.seen + ": ") + failed.what();
    }
    return told;
}

} // namespace kit
