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
    {TvProgramProperty::EndTime, "EndTime", PropertyKind::Date, "TV Endzeit"},
    {TvProgramProperty::Title, "Subject", PropertyKind::Text,
     "TV Titel"},  // also the row of the program in its archive
    {TvProgramProperty::Genre, "Genre", PropertyKind::Text, "TV Genre"},
    {TvProgramProperty::Subtitle, "Subtitle", PropertyKind::Text, "TV Untertitel"},
    {TvProgramProperty::Country, "Country", PropertyKind::Text, "TV Land"},
    {TvProgramProperty::Year, "Year", PropertyKind::Number, "TV Sendejahr"},
    {TvProgramProperty::Length, "Length", PropertyKind::Number, "TV Länge"},  // minutes
    {TvProgramProperty::AgeLimit, "AgeLimit", PropertyKind::Text, "TV Alterbeschränkung"},
    {TvProgramProperty::Director, "Director", PropertyKind::Text, "TV Regie"},
    {TvProgramProperty::Screenplay, "Screenplay", PropertyKind::Text, "TV Drehbuch"},
    {TvProgramProperty::Author, "Author", PropertyKind::Text, "TV Autor"},
    {TvProgramProperty::Music, "Music", PropertyKind::Text, "TV Musik"},
    {TvProgramProperty::Presenter, "Presenter", PropertyKind::Text, "TV Moderator"},
    {TvProgramProperty::ShortDescription, "ShortDescription", PropertyKind::Text, "TV Kurzbeschreibung"},
    {TvProgramProperty::Description, "Description", PropertyKind::Text, "TV Beschreibung"},
    {TvProgramProperty::Cast, "Cast", PropertyKind::Text, "TV Darsteller"},
    {TvProgramProperty::ImageName, "ImageName", PropertyKind::Text, "TV ImageName"},
    {TvProgramProperty::Channel, "Channel", PropertyKind::Text, "TV Kanal"},
    {TvProgramProperty::StartTime, "StartTime", PropertyKind::Date, "TV Anfangszeit"},
});

class DvTvProgramItem : public DvPropertyView<TvProgramProperty> {
 public:
  DvTvProgramItem* AsTvProgram() override { return this; }
};

}  // namespace velmora::store
