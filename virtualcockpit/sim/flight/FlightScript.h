// The script of the flight: what the crew does when, and what the aircraft then shows.
#pragma once

#include <string_view>

#include "virtualcockpit/sim/flight/Track.h"

namespace tvx::vc::script {

struct Phase {
  double start;
  std::string_view name;
};
inline constexpr Phase kPhases[] = {
    {0, "Engine start"}, {13, "Run-up"},    {28, "Take-off"}, {47, "Climb"},     {127, "Cruise"},
    {158, "Descent"},    {205, "Approach"}, {238, "Landing"}, {243, "Roll-out"}, {262, "Shut-down"}};

inline constexpr Key kThrottle[] = {{0, 0},     {9, 0},     {11, .12},  {20, .12},  {22, .35},  {26, .35},
                                    {31, 1},    {112, 1},   {122, .68}, {158, .68}, {164, .38}, {210, .40},
                                    {236, .34}, {241, .05}, {258, .12}, {262, .12}, {264, 0},   {270, 0}};
inline constexpr Key kRpm[] = {{0, 0},      {6, 0},      {7, 160},    {9, 190},    {11, 950},
                               {20, 950},   {22, 1700},  {26, 1700},  {31, 2420},  {48, 2520},
                               {70, 2600},  {112, 2640}, {122, 2420}, {158, 2420}, {165, 2000},
                               {236, 1880}, {242, 1000}, {262, 900},  {265, 0},    {270, 0}};
inline constexpr Key kAirspeed[] = {{0, 0},     {28, 0},   {36, 28},  {44, 58},   {50, 74},
                                    {60, 90},   {100, 94}, {112, 97}, {128, 116}, {158, 119},
                                    {166, 110}, {190, 98}, {212, 84}, {236, 74},  {243, 62},
                                    {250, 36},  {258, 10}, {262, 0},  {270, 0}};
inline constexpr Key kVerticalSpeed[] = {{0, 0},      {45, 0},     {50, 300},   {57, 820},   {66, 980},
                                         {100, 940},  {112, 850},  {120, 380},  {127, 0},    {158, 0},
                                         {165, -650}, {180, -850}, {205, -800}, {222, -620}, {234, -560},
                                         {239, -250}, {242.5, 0},  {270, 0}};
inline constexpr Key kPitch[] = {{0, 0},   {43, 0},    {47, 9},     {60, 8},     {100, 7},  {112, 6},
                                 {127, 2}, {158, 1.5}, {166, -2.5}, {200, -2.5}, {222, -2}, {236, -1.5},
                                 {240, 5}, {243, 6},   {249, 0},    {270, 0}};

// Four left turns of ninety degrees each.
struct Turn {
  double start, end, bank;
};
inline constexpr Turn kTurns[] = {{74, 97, -22}, {104, 128, -23}, {168, 193, -24}, {198, 221, -20}};
inline constexpr double kTurnIn = 4;  // s to roll in or out

inline constexpr Key kFlaps[] = {{0, 0},    {14, 0},   {18, .25}, {60, .25}, {66, 0},  {188, 0},
                                 {193, .5}, {214, .5}, {219, 1},  {250, 1},  {256, 0}, {270, 0}};
inline constexpr Key kBrakes[] = {{0, 1},    {27, 1},   {28, 0},  {244, 0},
                                  {247, .6}, {260, .6}, {262, 1}, {270, 1}};
inline constexpr Key kTrim[] = {{0, 0},     {50, .05},  {70, .12}, {130, -.05},
                                {160, .02}, {220, .18}, {250, .1}, {270, 0}};

inline constexpr Key kBus1[] = {{0, 0},        {2, 0},     {2.6, 24.4}, {6, 24.2},   {7, 20.5},
                                {9, 21.0},     {11, 24.6}, {13.5, 28},  {262, 28.1}, {265, 24.4},
                                {267.4, 24.2}, {268, 0},   {270, 0}};
inline constexpr Key kBus2[] = {{0, 0}, {14, 0}, {14.6, 27.8}, {260, 27.9}, {260.6, 0}, {270, 0}};
// Dusk falls in cruise: the instrument lights come up, the navigation lights a little before them.
inline constexpr Key kInstrumentLights[] = {{0, 0},     {131, 0}, {143, .8}, {200, .65},
                                            {259, .65}, {265, 0}, {270, 0}};
inline constexpr double kNavigationLightsOn = 129, kNavigationLightsOff = 264;

}  // namespace tvx::vc::script
