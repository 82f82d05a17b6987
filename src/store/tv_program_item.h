// The typed view of a TV program.
#pragma once

#include <array>

#include "store/property_view.h"

namespace velmora::store {

enum class TvProgramProperty {
  EndTime,
  Title,
  Genre,
  Subtitle,
  Country,
  Year,
  Length,
  AgeLimit,
  Director,
  Screenplay,
  Author,
  Music,
  Presenter,
  ShortDescription,
  Description,
  Cast,
  ImageName,
  Channel,
  StartTime,
};

// In the order of TvProgramProperty.
inline constexpr auto TvProgramProperties = std::to_array<PropertyInfo<TvProgramProperty>>({
    {TvProgramProperty::EndTime, "EndTime", PropertyKind::Date},
    {TvProgramProperty::Title, "Subject", PropertyKind::Text},  // also the row of the program in its archive
    {TvProgramProperty::Genre, "Genre", PropertyKind::Text},
    {TvProgramProperty::Subtitle, "Subtitle", PropertyKind::Text},
    {TvProgramProperty::Country, "Country", PropertyKind::Text},
    {TvProgramProperty::Year, "Year", PropertyKind::Number},
    {TvProgramProperty::Length, "Length", PropertyKind::Number},  // minutes
    {TvProgramProperty::AgeLimit, "AgeLimit", PropertyKind::Text},
    {TvProgramProperty::Director, "Director", PropertyKind::Text},
    {TvProgramProperty::Screenplay, "Screenplay", PropertyKind::Text},
    {TvProgramProperty::Author, "Author", PropertyKind::Text},
    {TvProgramProperty::Music, "Music", PropertyKind::Text},
    {TvProgramProperty::Presenter, "Presenter", PropertyKind::Text},
    {TvProgramProperty::ShortDescription, "ShortDescription", PropertyKind::Text},
    {TvProgramProperty::Description, "Description", PropertyKind::Text},
    {TvProgramProperty::Cast, "Cast", PropertyKind::Text},
    {TvProgramProperty::ImageName, "ImageName", PropertyKind::Text},
    {TvProgramProperty::Channel, "Channel", PropertyKind::Text},
    {TvProgramProperty::StartTime, "StartTime", PropertyKind::Date},
});

class DvTvProgramItem : public DvPropertyView<TvProgramProperty> {
 public:
  DvTvProgramItem* AsTvProgram() override { return this; }
};

}  // namespace velmora::store
