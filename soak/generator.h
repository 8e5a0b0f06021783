#pragma once

#include "soak/random.h"
#include "soak/step.h"
#include "view/view.h"

#include <QString>

#include <deque>

namespace plotwell::soak {

class World;

// Makes the steps of a run at random, from a seed. It looks at the editor as
// the steps leave it, so that clicks fall on records, Enter follows a label
// click and drags follow presses; the steps it makes are data, and replaying
// them needs no generator.
class Generator {
public:
    Generator(std::uint64_t seed, const World& world) : rng(seed), world(world) {}

    // The next step: one planned by an earlier step, or one of a kind chosen
    // by the kinds' weights.
    Step next();
    // A step that may run inside another one's pending events.
    Step nestedStep();
    // A step to come right after the one being made.
    void plan(Step step) { m_planned.push_back(std::move(step)); }
    // A step made by make, with whatever that plans after it, to come next.
    void planMade(Step (*make)(Generator&))
    {
        const std::size_t at = m_planned.size();
        Step step = make(*this);
        m_planned.insert(m_planned.begin() + std::ptrdiff_t(at), std::move(step));
    }

    // Values for the step kinds.
    SurfacePoint point();
    int pressButton();
    int heldButtons();
    QString caption();
    QString typedNumber();
    QString typedLocation();
    QString keyword();
    QString mapRecipe();
    QString pictureRecipe();
    QString saveAnswer();

    Rng rng;
    const World& world;

private:
    std::deque<Step> m_planned;
};

} // namespace plotwell::soak
