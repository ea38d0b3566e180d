#include "sample/demo_catalog.h"

namespace cp::sample::demo {

const std::vector<Country>& Countries() {
  static const std::vector<Country> countries = {
      {"España",
       {
           {"Madrid",
            {{"Madrid",
              40,
              {"Centro", "Chamberí", "Salamanca", "Retiro", "Arganzuela", "Tetuán", "Chamartín",
               "Moncloa", "Carabanchel", "Puente de Vallecas", "Hortaleza", "Goya"}},
             {"Alcalá de Henares", 6, {"Centro", "Casco Histórico", "El Ensanche"}},
             {"Móstoles", 5, {"Centro", "Parque Coimbra"}},
             {"Getafe", 5, {"Centro", "El Bercial"}},
             {"Pozuelo de Alarcón", 4, {"Somosaguas", "Húmera"}},
             {"Alcobendas", 4, {"La Moraleja", "Centro"}},
             {"Las Rozas de Madrid", 3, {}},
             {"Leganés", 4, {}}}},
           {"Barcelona",
            {{"Barcelona",
              30,
              {"L'Eixample", "Gràcia", "Sants-Montjuïc", "Les Corts", "Sant Martí",
               "Sarrià-Sant Gervasi", "Ciutat Vella", "Horta-Guinardó"}},
             {"L'Hospitalet de Llobregat", 5, {"Bellvitge", "Centre"}},
             {"Badalona", 4, {}},
             {"Sabadell", 3, {"Centre"}},
             {"Sitges", 3, {}}}},
           {"Valencia",
            {{"València", 14, {"Ruzafa", "El Carmen", "Benimaclet", "Campanar", "Malvarrosa"}},
             {"Gandia", 3, {"Playa de Gandia", "Centro"}},
             {"Torrent", 2, {}},
             {"Sagunto", 2, {}}}},
           {"Sevilla",
            {{"Sevilla",
              14,
              {"Triana", "Nervión", "Los Remedios", "Macarena", "Santa Cruz", "Centro"}},
             {"Dos Hermanas", 3, {"Centro", "Montequinto"}},
             {"Écija", 1, {}},
             {"Utrera", 1, {}}}},
           {"Málaga",
            {{"Málaga", 10, {"Centro", "El Palo", "Teatinos", "Pedregalejo"}},
             {"Marbella", 8, {"Puerto Banús", "Nueva Andalucía", "Centro", "Golden Mile"}},
             {"Fuengirola", 4, {"Los Boliches", "Centro"}},
             {"Torremolinos", 3, {"La Carihuela"}},
             {"Nerja", 2, {}},
             {"Estepona", 3, {}}}},
           {"Alicante",
            {{"Alicante", 8, {"Centro", "Playa de San Juan", "Benalúa"}},
             {"Benidorm", 6, {"Rincón de Loix", "Levante", "Poniente"}},
             {"Elche", 3, {}},
             {"Torrevieja", 4, {}},
             {"Dénia", 2, {}},
             {"L'Alfàs del Pi", 1, {"L'Albir"}}}},
           {"A Coruña",
            {{"A Coruña", 6, {"Ciudad Vieja", "Monte Alto", "Los Rosales"}},
             {"Santiago de Compostela", 4, {"Casco Histórico", "Ensanche"}},
             {"Ferrol", 1, {}}}},
           {"Vizcaya",
            {{"Bilbao", 7, {"Abando", "Indautxu", "Deusto", "Casco Viejo"}},
             {"Getxo", 3, {"Algorta", "Neguri"}},
             {"Barakaldo", 2, {}}}},
           {"Zaragoza",
            {{"Zaragoza", 7, {"Centro", "Delicias", "Actur", "Casco Histórico"}},
             {"Calatayud", 1, {}}}},
           {"Ávila", {{"Ávila", 3, {"Centro", "Casco Antiguo"}}, {"Arévalo", 1, {}}}},
           {"Asturias",
            {{"Oviedo", 4, {"Centro", "El Cristo"}},
             {"Gijón", 4, {"Cimadevilla", "La Arena", "Somió"}},
             {"Avilés", 1, {}}}},
           {"Illes Balears",
            {{"Palma", 8, {"Santa Catalina", "Son Vida", "Casco Antiguo"}},
             {"Calvià", 3, {"Santa Ponsa", "Portals Nous"}},
             {"Sóller", 1, {}}}},
           {"Las Palmas",
            {{"Las Palmas de Gran Canaria", 5, {"Vegueta", "Las Canteras", "Triana"}},
             {"San Bartolomé de Tirajana", 3, {"Maspalomas", "Playa del Inglés"}}}},
           {"Granada",
            {{"Granada", 5, {"Albaicín", "Realejo", "Centro", "Zaidín"}}, {"Motril", 1, {}}}},
           {"Cádiz",
            {{"Cádiz", 3, {"Casco Antiguo", "La Viña"}},
             {"Jerez de la Frontera", 3, {}},
             {"Tarifa", 1, {}}}},
           {"Toledo",
            {{"Toledo", 3, {"Casco Histórico", "Santa Bárbara"}},
             {"Talavera de la Reina", 2, {}},
             {"Seseña", 1, {}}}},
           {"Navarra",
            {{"Pamplona", 4, {"Casco Antiguo", "San Juan", "Ensanche"}}, {"Tudela", 1, {}}}},
           {"Guipúzcoa", {{"San Sebastián", 5, {"Parte Vieja", "Gros", "Amara"}}, {"Irun", 1, {}}}},
           {"Murcia",
            {{"Murcia", 5, {"Centro", "El Carmen"}}, {"Cartagena", 3, {}}, {"Lorca", 1, {}}}},
           {"Salamanca", {{"Salamanca", 3, {"Centro", "Garrido"}}, {"Béjar", 1, {}}}},
           {"Girona",
            {{"Girona", 2, {"Barri Vell"}}, {"Lloret de Mar", 2, {}}, {"Figueres", 1, {}}}},
       }},
      {"Portugal",
       {
           {"Lisboa",
            {{"Lisboa", 6, {"Alfama", "Chiado", "Belém"}}, {"Cascais", 2, {}}, {"Sintra", 1, {}}}},
           {"Oporto", {{"Oporto", 3, {"Ribeira", "Boavista"}}, {"Vila Nova de Gaia", 1, {}}}},
           {"Faro", {{"Albufeira", 2, {}}, {"Lagos", 1, {}}, {"Faro", 1, {}}}},
       }},
      {"Francia",
       {
           {"Pirineos Orientales", {{"Perpiñán", 2, {}}, {"Colliure", 1, {}}}},
           {"Alpes Marítimos", {{"Niza", 2, {"Vieux Nice"}}, {"Cannes", 1, {}}}},
       }},
      {"Andorra",
       {
           {"Andorra la Vella", {{"Andorra la Vella", 2, {}}}},
           {"Escaldes-Engordany", {{"Escaldes-Engordany", 1, {}}}},
       }},
      {"Italia", {}},
  };
  return countries;
}

const std::vector<PropertyType>& PropertyTypes() {
  static const std::vector<PropertyType> types = {
      {"Piso", "Vivienda", true, 40, 180},           {"Ático", "Vivienda", true, 50, 220},
      {"Dúplex", "Vivienda", true, 80, 250},         {"Estudio", "Vivienda", true, 25, 50},
      {"Chalet", "Vivienda", true, 120, 600},        {"Casa adosada", "Vivienda", true, 100, 280},
      {"Local", "Local comercial", false, 30, 450},  {"Oficina", "Oficina", false, 40, 600},
      {"Nave", "Nave industrial", false, 200, 3000}, {"Solar", "Terreno", false, 150, 5000},
      {"Plaza de garaje", "Garaje", false, 10, 30},
  };
  return types;
}

const std::vector<AliasEntry>& PropertyAliases() {
  static const std::vector<AliasEntry> aliases = {
      {"Vivienda", true}, {"Oficina", true},   {"Local comercial", true},
      {"Garaje", true},   {"Trastero", false}, {"Nave industrial", true},
      {"Terreno", true},  {"Edificio", false},
  };
  return aliases;
}

const std::vector<std::string_view>& Operations() {
  static const std::vector<std::string_view> v = {"Venta", "Alquiler", "Traspaso",
                                                  "Alquiler con opción a compra"};
  return v;
}

const std::vector<std::string_view>& Heatings() {
  static const std::vector<std::string_view> v = {"No se sabe", "Gas natural",     "Eléctrica",
                                                  "Gasóleo",    "Sin calefacción", "Bomba de calor",
                                                  "Central"};
  return v;
}

const std::vector<std::string_view>& Accesses() {
  static const std::vector<std::string_view> v = {"Libre", "Llaves en oficina", "Portero",
                                                  "Propietario", "Cita previa"};
  return v;
}

const std::vector<std::string_view>& ContactCategories() {
  static const std::vector<std::string_view> v = {"Vip",        "Moroso",  "Inversor",
                                                  "Extranjero", "Empresa", "Recomendado"};
  return v;
}

const std::vector<std::string_view>& PropertyCategories() {
  static const std::vector<std::string_view> v = {"Lujo",
                                                  "Oportunidad",
                                                  "Reformado",
                                                  "Con vistas",
                                                  "Céntrico",
                                                  "Para reformar",
                                                  "Primera línea de playa",
                                                  "Luminoso"};
  return v;
}

const std::vector<User>& Users() {
  static const std::vector<User> v = {
      {"Ana García Ruiz", "España", "Madrid", "Madrid"},
      {"Luis Pérez Gómez", "España", "Sevilla", "Sevilla"},
      {"María José Núñez", "España", "Málaga", "Marbella"},
      {"Jordi Puig i Ferrer", "España", "Barcelona", "Barcelona"},
      {"Iñaki Etxeberria", "España", "Vizcaya", "Bilbao"},
      {"João Silva", "Portugal", "Lisboa", "Lisboa"},
  };
  return v;
}

const std::vector<std::string_view>& FirstNames() {
  static const std::vector<std::string_view> v = {
      "Antonio", "José",          "Manuel",   "Francisco", "David",    "Juan",       "Javier",
      "Daniel",  "Carlos",        "Jesús",    "Alejandro", "Miguel",   "Rafael",     "Pedro",
      "Pablo",   "Ángel",         "Sergio",   "Fernando",  "Jorge",    "Luis",       "Alberto",
      "Álvaro",  "Adrián",        "Raúl",     "Enrique",   "Ramón",    "Iñigo",      "María",
      "Carmen",  "Ana",           "Isabel",   "Laura",     "Cristina", "Marta",      "Lucía",
      "Pilar",   "Elena",         "Raquel",   "Rosa",      "Paula",    "Sara",       "Beatriz",
      "Nuria",   "Silvia",        "Mónica",   "Inés",      "Begoña",   "Montserrat", "Ainhoa",
      "Sofía",   "María Ángeles", "José Luis"};
  return v;
}

const std::vector<std::string_view>& Surnames() {
  static const std::vector<std::string_view> v = {
      "García",  "Fernández", "González", "Rodríguez",  "López",   "Martínez",  "Sánchez",
      "Pérez",   "Gómez",     "Martín",   "Jiménez",    "Ruiz",    "Hernández", "Díaz",
      "Moreno",  "Muñoz",     "Álvarez",  "Romero",     "Alonso",  "Gutiérrez", "Navarro",
      "Torres",  "Domínguez", "Vázquez",  "Ramos",      "Gil",     "Ramírez",   "Serrano",
      "Blanco",  "Molina",    "Morales",  "Suárez",     "Ortega",  "Delgado",   "Castro",
      "Ortiz",   "Rubio",     "Marín",    "Sanz",       "Núñez",   "Iglesias",  "Medina",
      "Garrido", "Cortés",    "Castillo", "Santos",     "Lozano",  "Guerrero",  "Cano",
      "Prieto",  "Méndez",    "Calvo",    "Gallego",    "Vidal",   "León",      "Márquez",
      "Herrera", "Peña",      "Cabrera",  "Vega",       "Fuentes", "Carrasco",  "Caballero",
      "Nieto",   "Aguilar",   "Pascual",  "Ibáñez",     "Ferrer",  "Durán",     "Benítez",
      "Crespo",  "Pastor",    "Soto",     "Sáez",       "Velasco", "Soler",     "Parra",
      "Bravo",   "D'Ors",     "O'Shea",   "Etxeberria", "Puig",    "Quiñones",  "Echevarría",
      "Llorente"};
  return v;
}

const std::vector<std::string_view>& Streets() {
  static const std::vector<std::string_view> v = {"C/ Mayor",
                                                  "C/ Real",
                                                  "Gran Vía",
                                                  "C/ de Alcalá",
                                                  "Avda. de la Constitución",
                                                  "C/ San Francisco",
                                                  "C/ Goya",
                                                  "C/ Velázquez",
                                                  "C/ del Carmen",
                                                  "C/ Nueva",
                                                  "Pza. de España",
                                                  "C/ Cervantes",
                                                  "Avda. de Colón",
                                                  "C/ Reyes Católicos",
                                                  "Avda. de Andalucía",
                                                  "C/ O'Donnell",
                                                  "C/ Serrano",
                                                  "C/ Príncipe de Vergara",
                                                  "C/ Ramón y Cajal",
                                                  "Paseo de Gracia",
                                                  "Rambla de Catalunya",
                                                  "Paseo Marítimo",
                                                  "C/ Miguel de Unamuno",
                                                  "Ronda de Toledo",
                                                  "Camino Viejo",
                                                  "Urb. Los Pinos"};
  return v;
}

const std::vector<std::string_view>& AgencyPrefixes() {
  static const std::vector<std::string_view> v = {
      "Inmobiliaria", "Fincas", "Gestión Inmobiliaria", "Servicios Inmobiliarios",
      "Agencia",      "Habitat"};
  return v;
}

const std::vector<std::string_view>& AgencyNames() {
  static const std::vector<std::string_view> v = {
      "Sol",        "Mediterráneo", "Norte",      "Castilla", "Levante", "del Sur",
      "Atlántico",  "Centro",       "Costa",      "Hogar",    "Torre",   "Plaza Mayor",
      "Cantábrico", "La Dehesa",    "El Faro",    "Olivar",   "Sierra",  "Puerta del Sol",
      "Bahía",      "Alameda",      "Los Álamos", "Peñalara", "L'Horta"};
  return v;
}

const std::vector<std::string_view>& CompanyKinds() {
  static const std::vector<std::string_view> v = {"Construcciones", "Inversiones", "Promociones",
                                                  "Gestoría",       "Talleres",    "Comercial",
                                                  "Distribuciones", "Asesores"};
  return v;
}

const std::vector<std::string_view>& ContactNotes() {
  static const std::vector<std::string_view> v = {
      "Prefiere contacto por la tarde.",        "Llamar antes de visitar.",
      "Interesado en inversión a largo plazo.", "Referido por otro cliente.",
      "No enviar publicidad por correo.",       "Habla inglés y francés.",
      "Pendiente de enviar documentación.",     "Busca para su hija.",
      "Pago siempre por transferencia.",        "Contactar con su gestor, el Sr. D'Ors."};
  return v;
}

const std::vector<std::string_view>& PropertyNotes() {
  static const std::vector<std::string_view> v = {
      "Muy luminoso",       "Exterior a dos calles", "Necesita reforma de cocina",
      "Cerca del metro",    "Vistas al mar",         "Comunidad con piscina",
      "Aire acondicionado", "Junto a colegios",      "Precio negociable",
      "Suelos de parquet",  "Orientación sur",       "Ideal inversores: 50% financiado"};
  return v;
}

const std::vector<std::string_view>& DemandNotes() {
  static const std::vector<std::string_view> v = {"Busca cerca del metro",
                                                  "Necesita plaza de garaje",
                                                  "Urgente: traslado por trabajo",
                                                  "Con mascotas",
                                                  "Financiación aprobada",
                                                  "Solo planta baja o con ascensor",
                                                  "Quiere terraza",
                                                  "Zona tranquila, con colegios cerca"};
  return v;
}

}  // namespace cp::sample::demo
