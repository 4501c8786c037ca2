#pragma once

#include <limits>
#include <string_view>

#include "embedded/model/Document.h"
#include "embedded/storage/JsonTree.h"

namespace embedded {

// What reader and writer of document files agree on.

constexpr std::string_view kDocumentFormat = "biw-process-document";
constexpr int kDocumentVersion = 1;
constexpr int kHighestVersion = 1'000'000;

// A value of the model and its word in the file.
template <class Value>
struct Word {
  Value value;
  std::string_view text;
};

constexpr Word<Document::Kind> kDocumentKinds[] = {{Document::Kind::Process, "process"},
                                                   {Document::Kind::Product, "product"},
                                                   {Document::Kind::Neither, "neither"},
                                                   {Document::Kind::Both, "both"}};
constexpr Word<ActivityData::Kind> kActivityKinds[] = {{ActivityData::Kind::Physical, "physical"},
                                                       {ActivityData::Kind::Logical, "logical"}};
constexpr Word<ActivityData::Role> kActivityRoles[] = {
    {ActivityData::Role::Step, "step"},
    {ActivityData::Role::Station, "station"},
    {ActivityData::Role::Operation, "operation"}};
constexpr Word<ActivityData::Task> kActivityTasks[] = {
    {ActivityData::Task::None, "none"},
    {ActivityData::Task::Welding, "welding"},
    {ActivityData::Task::CurveFastening, "curveFastening"},
    {ActivityData::Task::Both, "both"}};

enum class FeatureKind { SpotWeld, CurveFastener, LocatingPoint, ClampingPoint };
constexpr Word<FeatureKind> kFeatureKinds[] = {{FeatureKind::SpotWeld, "spotWeld"},
                                               {FeatureKind::CurveFastener, "curveFastener"},
                                               {FeatureKind::LocatingPoint, "locatingPoint"},
                                               {FeatureKind::ClampingPoint, "clampingPoint"}};

// What numbers may be: mm or degrees, anything that is not negative, whatever is finite.
constexpr NumberRange kMeasures{-1e9, 1e9};
constexpr NumberRange kAmounts{0, 1e9};
constexpr NumberRange kFiniteNumbers{-1.7e308, 1.7e308};
constexpr int kLowestInteger = std::numeric_limits<int>::min();
constexpr int kHighestInteger = std::numeric_limits<int>::max();
constexpr int kHighestColour = 255;
constexpr int kHighestShow = 3;

}  // namespace embedded
