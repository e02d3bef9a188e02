#pragma once

#include <QCoreApplication>

/// Names and numbers of the program that more than one place needs.
namespace AppInfo
{

/// The braces belong to the names: they are part of the place where settings and mappings are kept.
constexpr char applicationName[] = "{Veltrix}";
constexpr char organisationName[] = "{Brimwell Labs}";
constexpr char organisationDomain[] = "veltrix.invalid";

/// Gives the application these names. Settings and data folder go by them.
inline void introduce()
{
    QCoreApplication::setApplicationName(QLatin1String(applicationName));
    QCoreApplication::setOrganizationName(QLatin1String(organisationName));
    QCoreApplication::setOrganizationDomain(QLatin1String(organisationDomain));
}

/// Where the links in the window's header lead.
constexpr char contactPage[] = "https://veltrix.invalid/contact";
constexpr char userGuidePage[] = "https://veltrix.invalid/guide";
constexpr char supportPage[] = "https://veltrix.invalid/support";

/// Shown in the window and compared with what the web service offers.
constexpr char version[] = "1.10";

} // namespace AppInfo
