// calendar/dav/MakeCalendar.cpp: MKCALENDAR, then a look at what became of the colour.
#include "calendar/dav/MakeCalendar.h"

#include <QUuid>

#include "calendar/dav/DavClient.h"
#include "calendar/dav/DavPath.h"
#include "calendar/dav/DavRequest.h"

namespace velkor {

ServerCalendar MakeServerCalendar(HttpClient& client, const std::string& home,
                                  const std::string& name, const std::string& colour) {
  const std::string url =
      CollectionUrl(home) + QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString() + "/";
  const HttpResponse made = client.Send(MakeCalendarRequest(url, name, colour));
  if (!made.IsSuccess()) throw RefusalOf(made);
  ServerCalendar calendar = DescribeCalendar(client, url).calendar;
  if (colour.empty() || calendar.colour == colour) return calendar;
  // Some servers ignore the colour of a new calendar. One that keeps none has a calendar all the
  // same.
  client.Send(ColourRequest(url, colour));
  return DescribeCalendar(client, url).calendar;
}

}  // namespace velkor
