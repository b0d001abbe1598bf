insert into utilisateur(login, mot_pase, nom, prenom, role) values ('ab12', 'x', 'Amrane', 'Ali', 'User');
insert into Endroit(ID_endroit, Endoit) values (1, 'Salle'), (2, 'Terrasse');
insert into Table_(ID_table, "table", endroit, id_endroit, etat, control, n_commande) values
  (1, 'T1', 'Salle', 1, 'OFF', 'open', 0),
  (2, 'T2', 'Salle', 1, 'OFF', 'open', 0),
  (3, 'Terrasse', 'Terrasse', 2, 'OFF', 'open', 0),
  (4, 'L''angle', 'Salle', 1, 'OFF', 'open', 0),
  (5, 'Bizarre', 'Salle', 1, 'off', 'open', 0);
insert into type(code, Type_Produit) values (1, 'Boissons'), (2, 'Plats');
insert into article(code_barre, designation_article, id_categorie, qte_stock, prix_vente, desto) values
  ('1', 'Café', 1, 10, 100, 'OUI'),
  ('2', 'Thé', 1, 5, 80, 'NON'),
  ('3', 'Jus d''orange', 1, 5, 150, 'OUI'),
  ('4', 'Eau', 1, 1, 50, 'OUI'),
  ('5', 'Glace', 1, null, 12.5, 'OUI'),
  ('6', 'Menu', 1, 5, 300, 'AUTRE'),
  ('7', 'Plat', 2, 8, 400, 'OUI');
insert into TVA(tva, utilisation) values (19, 'OUI');
insert into caisse(ID_caise, nom_caisse, solde, general, "select") values
  ('C000', 'Maison', 5000, 'OUI', 'OUI'),
  ('C001', 'Comptoir', 1000, 'NON', 'NON');
insert into acce_caisse(id_caisse, login, general) values ('C001', 'ab12', 'NON');
